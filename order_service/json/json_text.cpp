#include "json/json_text.h"

#include "model/input_error.h"

#include <set>
#include <vector>

namespace cartonpick::orders {

namespace {

using Json = nlohmann::json;

/// Watches a parser for a member that is named twice, of which it would silently keep the last.
class DuplicateWatch {
 public:
  void operator()(Json::parse_event_t event, const Json &parsed) {
    if (event == Json::parse_event_t::object_start) {
      ++m_objects;
      m_open.push_back({m_objects, {}});
    } else if (event == Json::parse_event_t::object_end) {
      m_open.pop_back();
    } else if (event == Json::parse_event_t::key) {
      addMember(parsed.get<std::string>());
    }
  }

 private:
  struct OpenObject {
    std::size_t number;
    std::set<std::string> members;
  };

  void addMember(const std::string &name) {
    OpenObject &object = m_open.back();
    if (!object.members.insert(name).second) {
      throw InputError("object " + std::to_string(object.number) + " has \"" + name + "\" twice");
    }
  }

  std::size_t m_objects = 0;
  std::vector<OpenObject> m_open;
};

/// The library's message without its own error name, and without the quotation of what it had read
/// last, which may not be UTF-8.
std::string plainMessage(std::string_view message) {
  message = message.substr(message.find("] ") + 2);
  return std::string(message.substr(0, message.find("; last read: ")));
}

}  // namespace

Json parseJson(std::string_view text, const std::string &name) {
  DuplicateWatch watch;
  const auto callback = [&watch](int, Json::parse_event_t event, const Json &parsed) {
    watch(event, parsed);
    return true;
  };
  // For the library a NUL ends the text, whatever comes behind it.
  if (text.find('\0') != std::string_view::npos) {
    throw InputError(name + " is not JSON: it contains a NUL character");
  }
  try {
    return Json::parse(text, callback);
  } catch (const Json::exception &error) {
    throw InputError(name + " is not JSON: " + plainMessage(error.what()));
  } catch (const InputError &error) {
    throw InputError(name + " is ambiguous: " + error.what());
  }
}

}  // namespace cartonpick::orders
