#include "batch/request.hpp"

#include <algorithm>
#include <cctype>

#include "app/signal/average_spectrum.hpp"

namespace torve {

namespace {

bool set_sample(int& sample, const std::string& word, int least) {
  const auto number = number_of<int>(word);
  if (!number || *number < least) return false;
  sample = *number;
  return true;
}

bool set_text(std::string& text, const std::string& word) {
  text = word;
  return true;
}

bool set_average(std::optional<int>& block, const std::string& word) {
  block = number_of<int>(word);
  return block && *block >= least_block && *block <= most_block;
}

struct Option {
  const char* name;
  Options needed;
  bool has_value;
  bool (*set)(Request& request, const std::string& value);
};

constexpr Option options[] = {
    {"--start", Options::range, true,
     [](Request& request, const std::string& value) {
       return set_sample(request.range.first, value, 0);
     }},
    {"--end", Options::range, true,
     [](Request& request, const std::string& value) {
       return set_sample(request.range.end, value, 1);
     }},
    {"--values", Options::values, false,
     [](Request& request, const std::string&) { return request.values = true; }},
    {"--json", Options::json, false,
     [](Request& request, const std::string&) { return request.json = true; }},
    {"--average", Options::average, true,
     [](Request& request, const std::string& value) {
       return set_average(request.average, value);
     }},
    {"--db", Options::decibels, false,
     [](Request& request, const std::string&) { return request.decibels = true; }},
    {"--format", Options::format, true,
     [](Request& request, const std::string& value) { return set_text(request.format, value); }},
    {"--size", Options::figure, true,
     [](Request& request, const std::string& value) { return set_text(request.size, value); }},
    {"--title", Options::figure, true,
     [](Request& request, const std::string& value) { return set_text(request.title, value); }},
};

}  // namespace

std::optional<Request> parse_request(const char* command, Options allowed, Words words) {
  Request request = {.command = command};
  for (std::size_t i = 0; i < words.size(); ++i) {
    if (!words[i].starts_with("--")) {
      request.words.push_back(words[i]);
      continue;
    }
    const auto option =
        std::ranges::find_if(options, [&](const Option& known) { return words[i] == known.name; });
    if (option == std::end(options) || !has(allowed, option->needed)) return std::nullopt;
    if (option->has_value && ++i == words.size()) return std::nullopt;
    if (!option->set(request, words[i])) return std::nullopt;
  }
  if (request.range.first >= request.range.end) return std::nullopt;
  return request;
}

std::string word_or(const Request& request, std::size_t i, const char* otherwise) {
  return i < request.words.size() ? request.words[i] : otherwise;
}

bool has_ending(const std::string& name, std::string_view ending) {
  if (name.size() <= ending.size()) return false;
  return std::equal(ending.begin(), ending.end(), name.end() - static_cast<int>(ending.size()),
                    [](char wanted, char there) {
                      return wanted == std::tolower(static_cast<unsigned char>(there));
                    });
}

}  // namespace torve
