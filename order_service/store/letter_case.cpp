#include "store/letter_case.h"

#include <algorithm>
#include <cwchar>
#include <locale>
#include <stdexcept>

namespace cartonpick::orders {

namespace {

using Codec = std::codecvt<wchar_t, char, std::mbstate_t>;
using Letters = std::ctype<wchar_t>;

const std::locale &unicode() {
  static const std::locale locale = [] {
    try {
      return std::locale("C.UTF-8");
    } catch (const std::runtime_error &) {
      return std::locale::classic();
    }
  }();
  return locale;
}

std::wstring decoded(std::string_view text) {
  std::wstring wide(text.size(), L'\0');
  std::mbstate_t state{};
  const char *read = nullptr;
  wchar_t *written = nullptr;
  std::use_facet<Codec>(unicode()).in(state, text.data(), text.data() + text.size(), read,
                                      wide.data(), wide.data() + wide.size(), written);
  wide.resize(static_cast<std::size_t>(written - wide.data()));
  return wide;
}

std::string encoded(const std::wstring &wide) {
  const auto &codec = std::use_facet<Codec>(unicode());
  std::string text(wide.size() * static_cast<std::size_t>(codec.max_length()), '\0');
  std::mbstate_t state{};
  const wchar_t *read = nullptr;
  char *written = nullptr;
  codec.out(state, wide.data(), wide.data() + wide.size(), read, text.data(),
            text.data() + text.size(), written);
  text.resize(static_cast<std::size_t>(written - text.data()));
  return text;
}

std::wstring small(std::wstring text) {
  std::use_facet<Letters>(unicode()).tolower(text.data(), text.data() + text.size());
  return text;
}

std::wstring capitals(std::wstring text) {
  std::use_facet<Letters>(unicode()).toupper(text.data(), text.data() + text.size());
  return text;
}

std::wstring capitalised(std::wstring text) {
  const auto &letters = std::use_facet<Letters>(unicode());
  bool isInWord = false;
  for (wchar_t &letter : text) {
    letter = isInWord ? letters.tolower(letter) : letters.toupper(letter);
    isInWord = letters.is(Letters::alnum, letter);
  }
  return text;
}

std::string withSmallAscii(std::string text) {
  for (char &c : text) {
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return text;
}

}  // namespace

std::vector<std::string> caseVariants(std::string_view text) {
  const std::wstring wide = decoded(text);
  std::vector<std::string> variants = {withSmallAscii(std::string(text))};
  for (const std::wstring &other : {small(wide), capitals(wide), capitalised(wide)}) {
    const std::string variant = withSmallAscii(encoded(other));
    if (std::find(variants.begin(), variants.end(), variant) == variants.end()) {
      variants.push_back(variant);
    }
  }
  return variants;
}

}  // namespace cartonpick::orders
