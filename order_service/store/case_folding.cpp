#include "store/case_folding.h"

#include <stdexcept>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/uchar.h>

namespace cartonpick::orders {

std::string caseFolded(std::string_view text) {
  std::string folded;
  icu::StringByteSink<std::string> sink(&folded);
  UErrorCode error = U_ZERO_ERROR;
  icu::CaseMap::utf8Fold(U_FOLD_CASE_DEFAULT,
                         icu::StringPiece(text.data(), static_cast<int32_t>(text.size())), sink,
                         nullptr, error);
  if (U_FAILURE(error) != 0) {
    throw std::runtime_error(std::string("ICU can't fold the case of a text: ") +
                             u_errorName(error));
  }
  return folded;
}

}  // namespace cartonpick::orders
