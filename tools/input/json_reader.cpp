#include "tools/input/json_reader.h"

#include <fmt/format.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <utility>

#include "tools/input/hex_text.h"
#include "tools/input/json_value.h"
#include "tools/model/message_types.h"
#include "tools/text/json_allocator.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::Reflection;
using Messages = std::vector<std::unique_ptr<Message>>;

constexpr std::size_t kDeepest = 100;

// Builds messages from the events of the library's reader.
class Builder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Builder> {
 public:
  Builder(std::string_view text, const Descriptor& type, Messages& messages)
      : text_(text), type_(type), messages_(messages), stream_(text.data(), text.size()) {}

  // Reads the next value. Returns where it ends, unless there is a problem.
  std::optional<std::size_t> Read() {
    constexpr unsigned kFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseStopWhenDoneFlag |
                                rapidjson::kParseNumbersAsStringsFlag |
                                rapidjson::kParseValidateEncodingFlag;
    last_ = stream_.Tell();
    const auto result = reader_.Parse<kFlags>(stream_, *this);
    if (result) return stream_.Tell();
    if (!problem) {
      problem = SyntaxProblem(text_, result.Offset(), result.Code());
      problem->path = Path(false);
    }
    return std::nullopt;
  }

  void WatchFor(std::size_t message, std::string_view path) {
    watched_message_ = message;
    watched_path_ = path;
  }

  std::optional<JsonProblem> problem;
  std::size_t watched_end = 0;

  // The events.

  bool Null() { return Scalar({JsonValue::Kind::kNull, "null"}); }
  bool Bool(bool value) { return Scalar({JsonValue::Kind::kBool, value ? "true" : "false"}); }
  bool RawNumber(const char* text, rapidjson::SizeType size, bool) {
    return Scalar({JsonValue::Kind::kNumber, {text, size}});
  }
  bool String(const char* text, rapidjson::SizeType size, bool) {
    return Scalar({JsonValue::Kind::kText, {text, size}});
  }

  bool StartObject() {
    const std::size_t start = Start();
    last_ = start + 1;
    if (frames_.empty()) {
      messages_.push_back(NewMessage(type_));
      frames_.push_back(Frame(messages_.back().get()));
      return true;
    }
    Frame& frame = frames_.back();
    if (in_hex_) return Fail(start, "hexadecimal text");
    if (frame.field->is_repeated() && !frame.in_array) return Fail(start, "an array");
    if (frame.field->cpp_type() == FieldDescriptor::CPPTYPE_STRING) {
      in_hex_ = true;
      has_bytes_ = false;
      return true;
    }
    if (frame.field->message_type() == nullptr) return Fail(start, ExpectedValue(*frame.field));
    if (frames_.size() > kDeepest) return Fail(start, "at most 100 levels of nesting");
    const Reflection& reflection = *frame.message->GetReflection();
    frames_.push_back(Frame(frame.in_array
                                ? reflection.AddMessage(frame.message, frame.field)
                                : reflection.MutableMessage(frame.message, frame.field)));
    return true;
  }

  bool Key(const char* text, rapidjson::SizeType size, bool) {
    const std::size_t start = Start();
    last_ = stream_.Tell();
    Frame& frame = frames_.back();
    const std::string_view name(text, size);
    if (in_hex_) return name == "hex" && !has_bytes_ ? true : Fail(start, "one member, \"hex\"");
    const Descriptor& type = *frame.message->GetDescriptor();
    frame.field = nullptr;
    const FieldDescriptor* field = FieldNamed(type, name);
    if (field == nullptr) return Fail(start, ExpectedField(type));
    frame.field = field;
    auto seen = frame.seen.begin() + field->index();
    if (*seen) return Fail(start, "each field once");
    *seen = true;
    return true;
  }

  bool EndObject(rapidjson::SizeType) {
    const std::size_t start = Start();
    last_ = start + 1;
    if (in_hex_) {
      in_hex_ = false;
      if (!has_bytes_) return Fail(start, "one member, \"hex\"");
      EndValue();
      return true;
    }
    frames_.back().field = nullptr;
    if (messages_.size() == watched_message_ + 1 && Path(true) == watched_path_)
      watched_end = start;
    frames_.pop_back();
    EndValue();
    return true;
  }

  bool StartArray() {
    const std::size_t start = Start();
    last_ = start + 1;
    if (frames_.empty()) {
      if (in_root_array_) return Fail(start, "an object for " + type_.name());
      in_root_array_ = true;
      return true;
    }
    Frame& frame = frames_.back();
    if (in_hex_) return Fail(start, "hexadecimal text");
    if (!frame.field->is_repeated() || frame.in_array) return Fail(start, Expected(frame));
    frame.in_array = true;
    frame.index = 0;
    return true;
  }

  bool EndArray(rapidjson::SizeType) {
    last_ = Start() + 1;
    if (frames_.empty()) return true;
    frames_.back().in_array = false;
    EndValue();
    return true;
  }

 private:
  // An object that is not complete.
  struct Frame {
    explicit Frame(Message* target)
        : message(target), seen(static_cast<std::size_t>(target->GetDescriptor()->field_count())) {}

    Message* message;
    std::vector<bool> seen;
    // The field whose name was read last; null before its value and after it.
    const FieldDescriptor* field = nullptr;
    bool in_array = false;
    int index = 0;
  };

  static std::string Expected(const Frame& frame) {
    if (frame.field->is_repeated() && !frame.in_array) return "an array";
    const Descriptor* type = frame.field->message_type();
    return type != nullptr ? "an object for " + type->name() : ExpectedValue(*frame.field);
  }

  // Where the token of this event starts: after the last one, blanks and separators.
  std::size_t Start() const {
    return std::min(text_.find_first_not_of(" \t\r\n,:", last_), text_.size());
  }

  bool Scalar(const JsonValue& value) {
    const std::size_t start = Start();
    last_ = stream_.Tell();
    if (frames_.empty()) return Fail(start, "an object for " + type_.name());
    Frame& frame = frames_.back();
    if (in_hex_) return Hexadecimal(start, value, frame);
    const bool absent = value.kind == JsonValue::Kind::kNull && !frame.in_array;
    const bool fits = frame.field->is_repeated() == frame.in_array &&
                      StoreValue(value, *frame.field, *frame.message);
    if (!absent && !fits) return Fail(start, Expected(frame));
    EndValue();
    return true;
  }

  // The value of "hex", for a text that is not UTF-8.
  bool Hexadecimal(std::size_t start, const JsonValue& value, Frame& frame) {
    Problem ignored;
    std::optional<std::string> bytes;
    if (value.kind == JsonValue::Kind::kText) bytes = DecodeHex(value.text, &ignored);
    if (!bytes) return Fail(start, "hexadecimal text");
    has_bytes_ = true;
    return StoreValue({JsonValue::Kind::kText, *bytes}, *frame.field, *frame.message);
  }

  void EndValue() {
    if (frames_.empty()) return;
    if (frames_.back().in_array) {
      ++frames_.back().index;
    } else {
      frames_.back().field = nullptr;
    }
  }

  std::string Path(bool with_index) const {
    std::string path;
    for (const Frame& frame : frames_) {
      if (frame.field == nullptr) break;
      if (!path.empty()) path += '.';
      path += frame.field->name();
      const bool inner = &frame != &frames_.back();
      if (frame.in_array && (with_index || inner)) path += fmt::format("[{}]", frame.index);
    }
    return path;
  }

  bool Fail(std::size_t offset, std::string expected) {
    problem = JsonProblem{offset, Path(true), TokenAt(text_, offset), std::move(expected)};
    return false;
  }

  std::string_view text_;
  const Descriptor& type_;
  Messages& messages_;
  rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, JsonAllocator> reader_;
  rapidjson::MemoryStream stream_;
  // Where the last token ends.
  std::size_t last_ = 0;
  std::vector<Frame> frames_;
  bool in_root_array_ = false;
  // Whether the reader is inside {"hex": ...}, and whether the bytes have been read.
  bool in_hex_ = false;
  bool has_bytes_ = false;
  std::size_t watched_message_ = static_cast<std::size_t>(-1);
  std::string_view watched_path_;
};

std::size_t SkipBlanks(std::string_view text, std::size_t offset) {
  return std::min(text.find_first_not_of(" \t\r\n", offset), text.size());
}

}  // namespace

std::optional<JsonProblem> ReadJson(std::string_view text, const Descriptor& type,
                                    JsonExtent extent, Messages* messages) {
  Builder builder(text, type, *messages);
  std::size_t offset = SkipBlanks(text, 0);
  const bool array = offset < text.size() && text[offset] == '[';
  do {
    const std::optional<std::size_t> end = builder.Read();
    if (!end) return std::move(builder.problem);
    offset = SkipBlanks(text, *end);
    if (array && offset < text.size()) {
      return JsonProblem{offset, "", TokenAt(text, offset), "the end of the text"};
    }
  } while (offset < text.size() && extent == JsonExtent::kAll);
  return std::nullopt;
}

std::size_t EndOfObject(std::string_view text, const Descriptor& type, std::size_t message,
                        std::string_view path) {
  Messages messages;
  Builder builder(text, type, messages);
  builder.WatchFor(message, path);
  for (std::size_t offset = SkipBlanks(text, 0); offset < text.size();) {
    const std::optional<std::size_t> end = builder.Read();
    if (!end) break;
    offset = SkipBlanks(text, *end);
  }
  return builder.watched_end;
}

}  // namespace zorl2_inspect
