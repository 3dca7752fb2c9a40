// The order service's parser of requests beside http_parser, a parser by other authors. It is more
// lenient; but of a request that neither refuses, both must read the same, and see the same end.

#include "Property.h"
#include "http/request_parser.h"

#include <algorithm>
#include <cctype>
#include <http_parser.h>
#include <map>
#include <string>
#include <string_view>

namespace {

using namespace cartonpick::orders;

constexpr HttpLimits kLimits;

std::string lowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

/// Without the blanks around it.
std::string trimmed(const std::string &text) {
  constexpr auto kBlanks = " \t";
  const auto begin = text.find_first_not_of(kBlanks);
  return begin == std::string::npos
             ? std::string()
             : text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

/// The first request of some bytes, as http_parser reads it.
class Reference {
 public:
  explicit Reference(std::string_view bytes) {
    http_parser_set_max_header_size(static_cast<std::uint32_t>(2 * kLimits.headBytes));
    http_parser_init(&m_parser, HTTP_REQUEST);
    m_parser.data = this;
    m_used = http_parser_execute(&m_parser, &settings(), bytes.data(), bytes.size());
  }
  Reference(const Reference &) = delete;
  Reference &operator=(const Reference &) = delete;
  ~Reference() = default;

  bool isWhole() const { return m_isWhole; }
  bool isRefused() const { return !m_isWhole && HTTP_PARSER_ERRNO(&m_parser) != HPE_OK; }
  bool keepsAlive() const { return m_keepsAlive; }
  std::size_t used() const { return m_used; }
  std::string method() const {
    return http_method_str(static_cast<enum http_method>(m_parser.method));
  }
  const std::string &target() const { return m_target; }
  const std::string &body() const { return m_body; }

  /// Returns the values of a header field, whose name is in lower case, as a list.
  std::string field(const std::string &name, const std::string &separator = ", ") const {
    std::string list;
    for (auto [at, end] = m_fields.equal_range(name); at != end; ++at) {
      list += list.empty() ? "" : separator;
      list += at->second;
    }
    return list;
  }

 private:
  static Reference &of(http_parser *parser) { return *static_cast<Reference *>(parser->data); }

  /// A callback that appends what http_parser has found to a member.
  template <std::string Reference::*Member>
  static int append(http_parser *parser, const char *data, std::size_t size) {
    (of(parser).*Member).append(data, size);
    return 0;
  }

  static const http_parser_settings &settings() {
    static const http_parser_settings kSettings = [] {
      http_parser_settings settings{};
      settings.on_url = append<&Reference::m_target>;
      settings.on_body = append<&Reference::m_body>;
      settings.on_header_field = [](http_parser *parser, const char *data, std::size_t size) {
        of(parser).addToName({data, size});
        return 0;
      };
      settings.on_header_value = [](http_parser *parser, const char *data, std::size_t size) {
        of(parser).m_value.append(data, size);
        of(parser).m_hasValue = true;
        return 0;
      };
      settings.on_headers_complete = [](http_parser *parser) {
        of(parser).addField();
        of(parser).m_hasHead = true;
        return 0;
      };
      settings.on_message_complete = [](http_parser *parser) {
        of(parser).m_isWhole = true;
        of(parser).m_keepsAlive = http_should_keep_alive(parser) != 0;
        http_parser_pause(parser, 1);
        return 0;
      };
      return settings;
    }();
    return kSettings;
  }

  void addToName(std::string_view part) {
    if (m_hasValue) {
      addField();
    }
    m_name += part;
  }

  /// The fields of the trailer do not count.
  void addField() {
    if (!m_hasHead && !m_name.empty()) {
      m_fields.emplace(lowerCase(m_name), trimmed(m_value));
    }
    m_name.clear();
    m_value.clear();
    m_hasValue = false;
  }

  http_parser m_parser{};
  std::size_t m_used = 0;
  std::string m_target;
  std::string m_body;
  std::string m_name;
  std::string m_value;
  std::multimap<std::string, std::string> m_fields;
  bool m_hasValue = false;
  bool m_hasHead = false;
  bool m_isWhole = false;
  bool m_keepsAlive = false;
};

/// The service keeps the path of a URL and takes its host in place of the field.
void compareTarget(const Request &request, const Reference &reference) {
  const std::string &target = reference.target();
  const auto scheme = target.find("://");
  if (target.starts_with('/') || target == "*") {
    require(request.target == target, "both read the same target");
    require(request.host == reference.field("host"), "both read the same Host");
    return;
  }
  require(scheme != std::string::npos, "another target is a URL");
  const std::string rest = target.substr(scheme + 3);
  const bool hasPath = rest == request.host + request.target;
  require(
      hasPath || '/' + rest.substr(std::min(request.host.size(), rest.size())) == request.target,
      "both read the same URL");
  require(rest.starts_with(request.host), "the host is that of the URL");
}

void compareFields(const Request &request, const Reference &reference) {
  require(request.contentType == reference.field("content-type"), "both read one Content-Type");
  require(request.authorization == reference.field("authorization"), "both read one Authorization");
  require(request.origin == reference.field("origin"), "both read one Origin");
  require(request.ifNoneMatch == reference.field("if-none-match"), "both read one If-None-Match");
  require(request.cookie == reference.field("cookie", "; "), "both read the same cookies");
}

/// Returns true if the parser refuses the request at the next end of a line.
bool isRefusedLater(RequestParser &parser, std::string_view rest) {
  parser.read(std::string(rest) + "\r\n\r\n\r\n");
  return parser.refusal().has_value();
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char *>(data), size);
  RequestParser parser(kLimits);
  const std::size_t used = parser.read(bytes);
  const Reference reference(bytes);
  if (parser.refusal() || reference.isRefused()) {
    return 0;
  }
  if (!parser.isWhole()) {
    require(!reference.isWhole() || isRefusedLater(parser, bytes.substr(used)),
            "a request that is complete for http_parser alone is refused");
    return 0;
  }
  require(reference.isWhole(), "a complete request is complete for http_parser, too");
  const Request &request = parser.request();
  require(used == reference.used(), "both see the same end of the request");
  require(request.method == reference.method(), "both read the same method");
  require(request.body == reference.body(), "both read the same body");
  // http_parser overlooks what follows an empty element of a list.
  require(reference.field("connection").find(',') != std::string::npos ||
              parser.keepsAlive() == reference.keepsAlive(),
          "both see whether the connection is kept");
  compareTarget(request, reference);
  compareFields(request, reference);
  return 0;
}
