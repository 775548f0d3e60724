#include "sound/load_codec.hpp"

#include <dlfcn.h>

#include "base/files.hpp"

namespace torve {

namespace {

constexpr const char* module_name = "sound.so";

// State: null until it has been loaded.
const SoundCodec* codec_now = nullptr;

}  // namespace

const SoundCodec* load_codec(std::string& why) {
  if (codec_now != nullptr) return codec_now;
  void* const module = dlopen(module_path(module_name).c_str(), RTLD_NOW | RTLD_LOCAL);
  void* const entry = module != nullptr ? dlsym(module, codec_entry) : nullptr;
  if (entry == nullptr) {
    const char* const reason = dlerror();
    why = reason != nullptr ? reason : codec_entry;
    return nullptr;
  }
  const SoundCodec* const codec = reinterpret_cast<const SoundCodec* (*)()>(entry)();
  if (codec->version != codec_version) {
    why = std::string(module_name) + " belongs to another version";
    return nullptr;
  }
  return codec_now = codec;
}

void install_codec(const SoundCodec* codec) {
  codec_now = codec;
}

}  // namespace torve
