#pragma once

#include <stdexcept>
#include <string>

namespace cartonpick::orders {

/// Something read from outside that is not as it must be. The text is for the person who sent it.
class InputError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Returns what `read` returns; an InputError that it throws gets `place` in front: "line 3: ...".
template <class Read>
auto readAt(const std::string &place, Read read) {
  try {
    return read();
  } catch (const InputError &error) {
    throw InputError(place + ": " + error.what());
  }
}

}  // namespace cartonpick::orders
