#include "http/strange_requests.h"

#include <array>
#include <cstddef>
#include <cstdio>

namespace cartonpick::orders {

namespace {

std::string hex(std::size_t number) {
  std::array<char, 20> text{};
  std::snprintf(text.data(), text.size(), "%zx", number);
  return text.data();
}

/// Puts requests together from their parts.
class Requests {
 public:
  Requests(std::string target, const std::string &body)
      : m_line("POST " + target + " HTTP/1.1\r\n"),
        m_target(std::move(target)),
        m_body(body),
        m_length("Content-Length: " + std::to_string(body.size()) + "\r\n"),
        m_chunk(hex(body.size()) + "\r\n" + body + "\r\n") {}

  const std::string &body() const { return m_body; }
  const std::string &length() const { return m_length; }
  std::string chunks(const std::string &trailer = {}) const {
    return m_chunk + "0\r\n" + trailer + "\r\n";
  }
  std::string with(const std::string &fields, const std::string &body) const {
    return withLine(m_line, "Host: test\r\n" + fields, body);
  }
  std::string withLine(const std::string &line, const std::string &fields,
                       const std::string &body) const {
    return line + "Content-Type: application/json\r\nConnection: close\r\n" + fields + "\r\n" +
           body;
  }
  std::string withTarget(const std::string &target) const {
    return withLine("POST " + target + " HTTP/1.1\r\n", "Host: test\r\n" + m_length, m_body);
  }
  const std::string &line() const { return m_line; }
  const std::string &target() const { return m_target; }

 private:
  std::string m_line;
  std::string m_target;
  std::string m_body;
  std::string m_length;
  std::string m_chunk;
};

const std::string kChunked = "Transfer-Encoding: chunked\r\n";

std::vector<StrangeRequest> strangeLengths(const Requests &requests) {
  const auto length = [&](const std::string &value) {
    return requests.with("Content-Length: " + value + "\r\n", requests.body());
  };
  const std::string size = std::to_string(requests.body().size());
  return {
      {"two lengths, the same",
       requests.with(requests.length() + requests.length(), requests.body()), 400},
      {"two lengths", requests.with(requests.length() + "Content-Length: 5\r\n", requests.body()),
       400},
      {"a list of lengths", length(size + ", " + size), 400},
      {"a length with a sign", length("+" + size), 400},
      {"a negative length", length("-" + size), 400},
      {"a length with letters", length(size + "abc"), 400},
      {"an escaped length", length("%31%32"), 400},
      {"a hexadecimal length", length("0x" + hex(requests.body().size())), 400},
      {"an empty length", length(""), 400},
      {"a length beyond 64 bits", length("99999999999999999999999"), 400},
      {"a length and a coding", requests.with(requests.length() + kChunked, requests.chunks()),
       400},
      {"a coding and a length", requests.with(kChunked + requests.length(), requests.chunks()),
       400},
  };
}

std::vector<StrangeRequest> strangeCodings(const Requests &requests) {
  const auto coding = [&](const std::string &value) {
    return requests.with("Transfer-Encoding: " + value + "\r\n", requests.chunks());
  };
  return {
      {"a coding twice", requests.with(kChunked + kChunked, requests.chunks()), 400},
      {"a list of codings", coding("gzip, chunked"), 501},
      {"a coding after chunked", coding("chunked, identity"), 501},
      {"an unknown coding", coding("xchunked"), 501},
      {"an empty coding", coding(""), 501},
      {"a coding in HTTP/1.0",
       requests.withLine("POST " + requests.target() + " HTTP/1.0\r\n", "Host: test\r\n" + kChunked,
                         requests.chunks()),
       400},
      {"a coding in capitals", coding("CHUNKED"), 200},
      {"a body that is compressed",
       requests.with("Content-Encoding: br\r\n" + requests.length(), requests.body()), 415},
      {"a body that is not compressed",
       requests.with("Content-Encoding: identity\r\n" + requests.length(), requests.body()), 200},
  };
}

std::vector<StrangeRequest> strangeChunks(const Requests &requests) {
  const auto chunked = [&](const std::string &body) { return requests.with(kChunked, body); };
  const std::string size = hex(requests.body().size());
  const std::string &body = requests.body();
  return {
      {"chunks", chunked(requests.chunks()), 200},
      {"a chunk without its line end", chunked(size + "\r\n" + body + "0\r\n\r\n"), 400},
      {"a chunk that ends in a line feed", chunked(size + "\r\n" + body + "\n0\r\n\r\n"), 400},
      {"a chunk size that ends in a line feed", chunked(size + "\n" + body + "\r\n0\r\n\r\n"), 400},
      {"a chunk size with 0x", chunked("0x" + size + "\r\n" + body + "\r\n0\r\n\r\n"), 400},
      {"a chunk size with a sign", chunked("+" + size + "\r\n" + body + "\r\n0\r\n\r\n"), 400},
      {"a chunk size after a blank", chunked(" " + size + "\r\n" + body + "\r\n0\r\n\r\n"), 400},
      {"no chunk size", chunked("\r\n" + body + "\r\n0\r\n\r\n"), 400},
      {"a chunk size beyond 64 bits", chunked("10000000000000001\r\n" + body + "\r\n0\r\n\r\n"),
       400},
      {"a chunk larger than a body may be", chunked("1000001\r\n" + body + "\r\n0\r\n\r\n"), 413},
      {"a chunk extension", chunked(size + ";a=b;c\r\n" + body + "\r\n0;d\r\n\r\n"), 200},
      {"a chunk extension in quotation marks",
       chunked(size + ";a=\"b\"\r\n" + body + "\r\n0\r\n\r\n"), 400},
      {"a chunk extension whose quotation marks span lines",
       chunked(size + ";a=\"b\r\n" + body + "\r\n0;\"\r\n\r\n"), 400},
      {"a chunk extension that is none", chunked(size + ";=\r\n" + body + "\r\n0\r\n\r\n"), 400},
      {"a long chunk extension",
       chunked(size + ";" + std::string(5000, 'a') + "\r\n" + body + "\r\n0\r\n\r\n"), 431},
      {"a trailer", chunked(requests.chunks("Checksum: 1\r\nHost: other\r\n")), 200},
      {"a trailer that is none", chunked(requests.chunks("Checksum\r\n")), 400},
      {"a trailer with a length", chunked(requests.chunks("Content-Length: 3\r\n")), 400},
      {"a long trailer", chunked(requests.chunks("A: " + std::string(5000, 'a') + "\r\n")), 431},
  };
}

std::vector<StrangeRequest> strangeFields(const Requests &requests) {
  const auto field = [&](const std::string &line) {
    return requests.with(line + requests.length(), requests.body());
  };
  const auto host = [&](const std::string &lines) {
    return requests.withLine(requests.line(), lines + requests.length(), requests.body());
  };
  return {
      {"a blank before the colon", field("Accept : a\r\n"), 400},
      {"a blank before a length's colon",
       requests.with("Content-Length : " + std::to_string(requests.body().size()) + "\r\n",
                     requests.body()),
       400},
      {"a bare line feed", field("Accept: a\nOrigin: b\r\n"), 400},
      {"a bare carriage return", field("Accept: a\rb\r\n"), 400},
      {"a line without a colon", field("Accept\r\n"), 400},
      {"a line without a name", field(": a\r\n"), 400},
      {"a NUL", field(std::string("Accept: a\0b\r\n", 13)), 400},
      {"a control character", field("Accept: a\x01\r\n"), 400},
      {"a line that is folded", field("Accept: a\r\n b\r\n"), 400},
      {"a first line that is folded", host(" Host: test\r\n"), 400},
      {"letters beyond ASCII in a value", field("Accept: \xC3\xA4\r\n"), 200},
      {"no Host", host(""), 400},
      {"two Hosts", host("Host: test\r\nHost: test\r\n"), 400},
      {"a Host that is none", host("Host: te/st\r\n"), 400},
      {"two Content-Types", field("Content-Type: application/json\r\n"), 400},
      {"two Content-Types, one empty",
       requests.withLine(requests.line() + "Content-Type:\r\n",
                         "Host: test\r\n" + requests.length(), requests.body()),
       400},
      {"an expectation that is unknown", field("Expect: 200-ok\r\n"), 417},
  };
}

std::vector<StrangeRequest> strangeLines(const Requests &requests) {
  const auto line = [&](const std::string &text) {
    return requests.withLine(text, "Host: test\r\n" + requests.length(), requests.body());
  };
  const std::string &target = requests.target();
  const std::string plain = requests.with(requests.length(), requests.body());
  return {
      {"nothing strange", plain, 200},
      {"an empty line before it", "\r\n" + plain, 200},
      {"two empty lines before it", "\r\n\r\n" + plain, 400},
      {"a line feed before it", "\n" + plain, 400},
      {"a target in absolute form", requests.withTarget("http://test:80" + target), 200},
      {"a target of another scheme", requests.withTarget("ftp://test" + target), 400},
      {"a target with a user", requests.withTarget("http://me@test" + target), 400},
      {"a target without a slash", requests.withTarget(target.substr(1)), 400},
      {"a target with a fragment", requests.withTarget(target + "#a"), 400},
      {"a target that is long", requests.withTarget(target + "?" + std::string(9000, 'a')), 414},
      {"two blanks", line("POST  " + target + " HTTP/1.1\r\n"), 400},
      {"a tabulator", line("POST\t" + target + " HTTP/1.1\r\n"), 400},
      {"a blank after the version", line("POST " + target + " HTTP/1.1 \r\n"), 400},
      {"no version", line("POST " + target + "\r\n"), 400},
      {"another version", line("POST " + target + " HTTP/2.0\r\n"), 400},
      {"a tunnel to a path", line("CONNECT " + target + " HTTP/1.1\r\n"), 400},
      {"a tunnel to a host", line("CONNECT test:80 HTTP/1.1\r\n"), 400},
      {"a method that is none", line("PO(ST " + target + " HTTP/1.1\r\n"), 400},
  };
}

}  // namespace

std::vector<StrangeRequest> strangeRequests(const std::string &target, const std::string &body) {
  const Requests requests(target, body);
  std::vector<StrangeRequest> all;
  for (const auto &some :
       {strangeLengths(requests), strangeCodings(requests), strangeChunks(requests),
        strangeFields(requests), strangeLines(requests)}) {
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}

}  // namespace cartonpick::orders
