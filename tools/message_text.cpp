#include "tools/message_text.h"

#include <fmt/format.h>
#include <google/protobuf/descriptor.h>
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/json_util.h>

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "tools/error.h"
#include "tools/json_check.h"
#include "tools/message_types.h"
#include "tools/text_parser.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;
using google::protobuf::TextFormat;

std::string Where(TextPlace place, const std::string& path) {
  return path.empty() ? PlaceText(place) : PlaceText(place) + ": " + path;
}

[[noreturn]] void Fail(const MessageText& input, const JsonProblem& problem) {
  throw InputError(input.name, Where(PlaceAt(input.text, problem.offset), problem.path),
                   fmt::format("expected {}, found {}", problem.expected, problem.found));
}

// A required field that is missing, as the path of its message and its own name.
std::string FirstMissing(const Message& message) {
  std::vector<std::string> missing;
  message.FindInitializationErrors(&missing);
  return missing.empty() ? "" : missing.front();
}

// Where the message that lacks a field begins: the deepest part of the path that was recorded.
TextPlace PlaceOfMissing(const Message& message, const TextFormat::ParseInfoTree& places,
                         std::string_view path) {
  TextPlace best{1, 1};
  const TextFormat::ParseInfoTree* tree = &places;
  const Descriptor* type = message.GetDescriptor();
  while (tree != nullptr && type != nullptr) {
    const std::size_t dot = path.find('.');
    if (dot == std::string_view::npos) break;
    const std::string_view step = path.substr(0, dot);
    const std::size_t bracket = step.find('[');
    const FieldDescriptor* field = type->FindFieldByName(std::string(step.substr(0, bracket)));
    if (field == nullptr) break;
    const int index = bracket == std::string_view::npos
                          ? 0
                          : std::atoi(std::string(step.substr(bracket + 1)).c_str());
    const auto place = tree->GetLocation(field, field->is_repeated() ? index : -1);
    if (place.line >= 0) {
      best = {static_cast<std::size_t>(place.line) + 1, static_cast<std::size_t>(place.column) + 1};
    }
    tree = tree->GetTreeForNested(field, field->is_repeated() ? index : -1);
    type = field->message_type();
    path.remove_prefix(dot + 1);
  }
  return best;
}

std::unique_ptr<Message> ReadText(const MessageText& input, const Descriptor& type) {
  std::unique_ptr<Message> message = NewMessage(type);
  FirstTextError error;
  TextFormat::ParseInfoTree places;
  if (!ParseText(input.text, *message, error, &places)) {
    throw InputError(input.name, Where(error.place(), ""), error.text());
  }
  const std::string missing = FirstMissing(*message);
  if (!missing.empty()) {
    throw InputError(input.name, Where(PlaceOfMissing(*message, places, missing), missing),
                     "expected the required field, found none");
  }
  return message;
}

std::unique_ptr<Message> ReadJson(const MessageText& input, std::string_view value,
                                  const Descriptor& type) {
  std::unique_ptr<Message> message = NewMessage(type);
  const google::protobuf::StringPiece json(value.data(), value.size());
  const auto status = google::protobuf::util::JsonStringToMessage(json, message.get());
  if (status.ok() && message->IsInitialized()) return message;
  const auto begin = static_cast<std::size_t>(value.data() - input.text.data());
  std::optional<JsonProblem> problem = FindJsonProblem(value, type);
  if (problem.has_value()) {
    problem->offset += begin;
    Fail(input, *problem);
  }
  // Something that only the runtime objects to.
  std::string text(status.message());
  throw InputError(input.name, Where(PlaceAt(input.text, begin), ""),
                   text.substr(0, text.find('\n')));
}

// How far a type gets: the offset of its first problem; nothing when it takes the whole text.
std::optional<std::size_t> FirstProblem(std::string_view text, bool json, const Descriptor& type) {
  if (json) {
    const auto problem = FindJsonProblem(text, type);
    if (!problem.has_value()) return std::nullopt;
    return problem->offset;
  }
  std::unique_ptr<Message> message = NewMessage(type);
  FirstTextError error;
  if (ParseText(text, *message, error)) {
    if (message->IsInitialized()) return std::nullopt;
    return text.size();
  }
  std::size_t offset = 0;
  for (std::size_t line = 1; line < error.place().line; ++line) {
    offset = text.find('\n', offset) + 1;
    if (offset == 0) return text.size();
  }
  return offset + error.place().column - 1;
}

std::size_t FirstField(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n{[");
  return start == std::string_view::npos ? text.size() : start;
}

}  // namespace

bool LooksLikeJson(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  return start != std::string_view::npos && (text[start] == '{' || text[start] == '[');
}

TextTypeGuess GuessTypeOfText(const MessageText& input, bool json) {
  std::string_view text = input.text;
  std::vector<std::string_view> values;
  if (json) {
    const auto problem = SplitJson(text, &values);
    // Damage in a later value does not keep the first from telling the type.
    if (!values.empty()) {
      text = values.front();
    } else if (problem.has_value()) {
      text = text.substr(std::min(text.find('{'), text.size()));
    }
  }
  std::vector<const Descriptor*> taking;
  const Descriptor* furthest = nullptr;
  std::size_t most = FirstField(text);
  for (const Descriptor* type : MessageTypes()) {
    const auto problem = FirstProblem(text, json, *type);
    if (!problem.has_value()) {
      taking.push_back(type);
    } else if (*problem > most) {
      most = *problem;
      furthest = type;
    }
  }
  if (taking.size() == 1) return {taking.front(), "the only type that takes the text"};
  if (taking.size() > 1) {
    std::string names;
    for (const Descriptor* type : taking) names += (names.empty() ? "" : ", ") + type->name();
    return {nullptr, "expected --type, because the text fits several: " + names};
  }
  if (furthest != nullptr) return {furthest, "no type takes the text, this one gets furthest"};
  return {nullptr, "expected --type, because the text begins with a field of no message"};
}

std::vector<std::unique_ptr<Message>> ReadMessages(const MessageText& input, bool json,
                                                   const Descriptor& type) {
  std::vector<std::unique_ptr<Message>> messages;
  if (!json) {
    messages.push_back(ReadText(input, type));
    return messages;
  }
  std::vector<std::string_view> values;
  const auto problem = SplitJson(input.text, &values);
  for (const std::string_view value : values) messages.push_back(ReadJson(input, value, type));
  if (problem.has_value()) {
    // In terms of the message where that is possible.
    const std::string_view rest =
        values.empty() ? input.text.substr(std::min(input.text.find('{'), input.text.size()))
                       : std::string_view();
    if (!rest.empty()) ReadJson(input, rest, type);
    Fail(input, *problem);
  }
  if (messages.empty())
    throw InputError(input.name, "line 1, column 1", "expected a message, found none");
  return messages;
}

}  // namespace zorl2_inspect
