# One static library per folder of src/, and the compiler settings that all of them share.

find_program(TORVE_CCACHE ccache)
if(TORVE_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${TORVE_CCACHE})
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_FLAGS_RELEASE "-O3 -DNDEBUG")
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g")

add_library(torve_settings INTERFACE)
target_include_directories(torve_settings INTERFACE ${CMAKE_SOURCE_DIR}/src)
# The printed digits are a contract: no contraction, whatever the machine offers.
target_compile_options(torve_settings INTERFACE
  -ffp-contract=off -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
if(TORVE_WARNINGS_ARE_ERRORS)
  target_compile_options(torve_settings INTERFACE -Werror)
endif()
# What people install is hardened as the distribution hardens its own programs. The sanitizers have
# checks of their own, with which these do not go together. Position independence is asked for as
# -fPIE: -fPIC, which CMake would take for libraries, keeps the compiler from inlining.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT TORVE_SANITIZE AND NOT TORVE_FUZZ)
  include(CheckCXXCompilerFlag)
  set(is_module $<STREQUAL:$<TARGET_PROPERTY:TYPE>,MODULE_LIBRARY>)
  target_compile_options(torve_settings INTERFACE
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong
    -Wformat -Werror=format-security $<IF:${is_module},-fPIC,-fPIE>)
  target_link_options(torve_settings INTERFACE
    $<$<NOT:${is_module}>:-pie> LINKER:-z,relro,-z,now)
  foreach(flag -fstack-clash-protection -fcf-protection)  # not every processor has them
    string(MAKE_C_IDENTIFIER "TORVE_HAS${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      target_compile_options(torve_settings INTERFACE ${flag})
    endif()
  endforeach()
endif()
if(TORVE_SANITIZE)
  set(TORVE_SANITIZERS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(torve_settings INTERFACE ${TORVE_SANITIZERS})
  # What is vectorised in a release is not when every access is checked.
  target_compile_options(torve_settings INTERFACE $<$<CXX_COMPILER_ID:Clang>:-Wno-pass-failed>)
  target_link_options(torve_settings INTERFACE ${TORVE_SANITIZERS})
endif()
if(TORVE_FUZZ)
  target_compile_options(torve_settings INTERFACE -fsanitize=fuzzer-no-link)
endif()

# torve_room(NAME SOURCES file... [LINK library...]): the library torve_NAME.
function(torve_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;LINK" ${ARGN})
  add_library(torve_${name} STATIC ${ROOM_SOURCES})
  target_link_libraries(torve_${name} PUBLIC torve_settings ${ROOM_LINK})
endfunction()

# torve_test(NAME SOURCES file... [LINK library...]): a GoogleTest program, each case known to CTest.
function(torve_test name)
  cmake_parse_arguments(TEST "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name}_test ${TEST_SOURCES})
  target_include_directories(${name}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name}_test PRIVATE torve_settings ${TEST_LINK} GTest::gtest GTest::gtest_main)
  set_target_properties(${name}_test PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  gtest_discover_tests(${name}_test TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST
    WORKING_DIRECTORY ${CMAKE_BINARY_DIR})
endfunction()
