#include "tools/text_forms.h"

#include <fmt/format.h>
#include <google/protobuf/io/tokenizer.h>
#include <google/protobuf/io/zero_copy_stream_impl_lite.h>
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/json_util.h>
#include <google/protobuf/util/type_resolver.h>
#include <google/protobuf/util/type_resolver_util.h>

#include <cctype>
#include <memory>
#include <vector>

#include "tools/error.h"
#include "tools/json_scan.h"
#include "tools/message_types.h"
#include "tools/text_parser.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::Message;
using google::protobuf::TextFormat;

constexpr char kUrlPrefix[] = "zorl2";

google::protobuf::util::TypeResolver& Resolver() {
  static const std::unique_ptr<google::protobuf::util::TypeResolver> resolver(
      google::protobuf::util::NewTypeResolverForDescriptorPool(
          kUrlPrefix, google::protobuf::DescriptorPool::generated_pool()));
  return *resolver;
}

std::string Url(const Descriptor& type) {
  return fmt::format("{}/{}", kUrlPrefix, type.full_name());
}

google::protobuf::util::Status Transcode(std::string_view text, const Descriptor& type,
                                         std::string* wire) {
  if (text.substr(0, 3) == "\xef\xbb\xbf") text.remove_prefix(3);
  google::protobuf::io::ArrayInputStream in(text.data(), static_cast<int>(text.size()));
  google::protobuf::io::StringOutputStream out(wire);
  return google::protobuf::util::JsonToBinaryStream(&Resolver(), Url(type), &in, &out, {});
}

// The names of the fields at the top of a text form: words outside of any braces and quotes.
std::vector<std::string> TextNames(std::string_view text) {
  FirstTextError ignored;
  google::protobuf::io::ArrayInputStream in(text.data(), static_cast<int>(text.size()));
  google::protobuf::io::Tokenizer tokenizer(&in, &ignored);
  tokenizer.set_comment_style(google::protobuf::io::Tokenizer::SH_COMMENT_STYLE);
  std::vector<std::string> names;
  int depth = 0;
  bool value = false;
  while (tokenizer.Next()) {
    const auto& token = tokenizer.current();
    if (token.text == "{" || token.text == "<" || token.text == "[") {
      ++depth;
      value = false;
    } else if (token.text == "}" || token.text == ">" || token.text == "]") {
      --depth;
    } else if (token.text == ":") {
      value = true;
    } else if (token.type == google::protobuf::io::Tokenizer::TYPE_IDENTIFIER && depth == 0 &&
               !value) {
      names.push_back(token.text);
    } else {
      value = false;
      continue;
    }
    if (token.text != ":" && value) value = false;
  }
  return names;
}

class JsonTaker : public NameGuesser {
 public:
  explicit JsonTaker(std::string_view text) : text_(text) {}
  bool Takes(const Descriptor& type) override {
    std::string wire;
    if (!Transcode(text_, type, &wire).ok()) return false;
    return NewMessage(type)->ParseFromString(wire);
  }

 private:
  std::string_view text_;
};

class TextTaker : public NameGuesser {
 public:
  explicit TextTaker(std::string_view text) : text_(text) {}
  bool Takes(const Descriptor& type) override {
    const std::unique_ptr<Message> message = NewMessage(type);
    FirstTextError error;
    return ParseText(text_, *message, error) && message->IsInitialized();
  }

 private:
  std::string_view text_;
};

void RequireJson(std::string_view text, std::string_view file) {
  if (const auto error = CheckJson(text)) {
    throw InputError(file, PlaceText(PlaceAt(text, error->offset)), error->problem);
  }
}

}  // namespace

std::string WireFromJson(std::string_view text, const Descriptor& type, std::string_view file) {
  RequireJson(text, file);
  std::string wire;
  const auto status = Transcode(text, type, &wire);
  if (status.ok()) {
    // The runtime's transcoder packs nothing; the message itself writes the form that peers send.
    const std::unique_ptr<Message> message = NewMessage(type);
    if (message->ParsePartialFromString(wire)) return message->SerializePartialAsString();
    return wire;
  }
  // The message begins with the path in parentheses when there is one, with the name of the unknown
  // field behind it.
  std::string problem = status.message().ToString();
  std::string path;
  if (!problem.empty() && problem.front() == '(' && problem.find(')') != problem.npos) {
    path = problem.substr(1, problem.find(')') - 1);
    problem.erase(0, problem.find(')') + 1);
    problem.erase(0, problem.find_first_not_of(": "));
  }
  std::string place = path;
  const std::size_t colon = problem.find(": Cannot find field");
  if (colon != problem.npos) {
    if (!place.empty()) place += '.';
    place += problem.substr(0, colon);
    problem = fmt::format("expected a field of {}, found \"{}\"", type.name(), place);
  } else if (!path.empty()) {
    problem = fmt::format("{}: {}", path, problem);
  }
  throw InputError(file, PlaceText(PlaceAt(text, FindJsonPath(text, place))), problem);
}

std::string WireFromText(std::string_view text, const Descriptor& type, std::string_view file) {
  const std::unique_ptr<Message> message = NewMessage(type);
  FirstTextError error;
  if (!ParseText(text, *message, error)) {
    throw InputError(file, PlaceText(error.place()), error.text());
  }
  return message->SerializePartialAsString();
}

TypeGuess GuessFromJson(std::string_view text, std::string_view file) {
  RequireJson(text, file);
  JsonTaker taker(text);
  return GuessFromNames(JsonNames(text), taker);
}

TypeGuess GuessFromText(std::string_view text, std::string_view) {
  TextTaker taker(text);
  return GuessFromNames(TextNames(text), taker);
}

std::string ToJson(const Message& message, bool pretty) {
  google::protobuf::util::JsonPrintOptions options;
  options.add_whitespace = pretty;
  options.preserve_proto_field_names = true;
  std::string wire = message.SerializePartialAsString();
  std::string json;
  google::protobuf::io::ArrayInputStream in(wire.data(), static_cast<int>(wire.size()));
  google::protobuf::io::StringOutputStream out(&json);
  const auto status = google::protobuf::util::BinaryToJsonStream(
      &Resolver(), Url(*message.GetDescriptor()), &in, &out, options);
  if (!status.ok()) throw std::runtime_error("JSON: " + status.message().ToString());
  if (json.empty() || json.back() != '\n') json += '\n';
  return json;
}

std::string ToText(const Message& message) {
  TextFormat::Printer printer;
  printer.SetUseUtf8StringEscaping(true);
  std::string text;
  printer.PrintToString(message, &text);
  return text;
}

}  // namespace zorl2_inspect
