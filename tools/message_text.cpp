#include "tools/message_text.h"

#include <fmt/format.h>
#include <google/protobuf/descriptor.h>
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/json_util.h>

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <set>

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

std::string Describe(const JsonProblem& problem) {
  return fmt::format("expected {}, found {}", problem.expected, problem.found);
}

[[noreturn]] void Fail(const MessageText& input, const JsonProblem& problem) {
  throw InputError(input.file, Where(PlaceAt(input.text, problem.offset), problem.path),
                   Describe(problem));
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
    throw InputError(input.file, Where(error.place(), ""), error.text());
  }
  const std::string missing = FirstMissing(*message);
  if (!missing.empty()) {
    throw InputError(input.file, Where(PlaceOfMissing(*message, places, missing), missing),
                     "expected the required field, found none");
  }
  return message;
}

// One value of the text.
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
  const std::string refusal(status.message());
  throw InputError(input.file, Where(PlaceAt(input.text, begin), ""),
                   refusal.substr(0, refusal.find('\n')));
}

// What keeps a text from being a message of a type, and how far it got.
struct Stop {
  std::size_t offset;
  std::string problem;
};

// Nothing when the type takes the whole text.
std::optional<Stop> FirstStop(std::string_view text, bool json, const Descriptor& type) {
  if (json) {
    const auto problem = FindJsonProblem(text, type);
    if (!problem.has_value()) return std::nullopt;
    return Stop{problem->offset, problem->path + Describe(*problem)};
  }
  std::unique_ptr<Message> message = NewMessage(type);
  FirstTextError error;
  if (ParseText(text, *message, error)) {
    if (message->IsInitialized()) return std::nullopt;
    return Stop{text.size(), FirstMissing(*message)};
  }
  std::size_t offset = 0;
  for (std::size_t line = 1; line < error.place().line; ++line) {
    offset = text.find('\n', offset) + 1;
    if (offset == 0) return Stop{text.size(), error.text()};
  }
  return Stop{offset + error.place().column - 1, error.text()};
}

std::size_t FirstField(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n{[");
  return start == std::string_view::npos ? text.size() : start;
}

}  // namespace

std::string_view WithoutMark(std::string_view text) {
  if (text.substr(0, 3) == "\xef\xbb\xbf") text.remove_prefix(3);
  return text;
}

bool LooksLikeJson(std::string_view text) {
  const std::size_t start = text.find_first_not_of(" \t\r\n");
  return start != std::string_view::npos && (text[start] == '{' || text[start] == '[');
}

TypeGuess GuessTypeOfText(const MessageText& input) {
  std::string_view text = input.text;
  std::optional<JsonProblem> broken;
  if (input.json) {
    std::vector<std::string_view> values;
    broken = SplitJson(text, &values);
    // Damage in a later value does not keep the first from telling the type.
    if (!values.empty()) {
      text = values.front();
    } else if (broken.has_value()) {
      text = text.substr(std::min(text.find('{'), text.size()));
    }
  }
  std::vector<const Descriptor*> taking;
  std::vector<const Descriptor*> furthest;
  std::size_t most = FirstField(text) + 1;
  std::set<std::string> problems;
  for (const Descriptor* type : MessageTypes()) {
    const auto stop = FirstStop(text, input.json, *type);
    if (!stop.has_value()) {
      taking.push_back(type);
    } else if (stop->offset >= most) {
      if (stop->offset > most) {
        furthest.clear();
        problems.clear();
      }
      most = stop->offset;
      furthest.push_back(type);
      problems.insert(stop->problem);
    }
  }
  if (taking.size() == 1) return {taking.front(), "the only type that takes the text"};
  if (taking.size() > 1) return AmbiguousType(taking);
  if (furthest.size() == 1) {
    return {furthest.front(), "no type takes the text, this one gets furthest"};
  }
  // Where all of them stop, none has come to a field of its own.
  if (!furthest.empty() && furthest.size() < MessageTypes().size()) {
    if (problems.size() > 1) return AmbiguousType(furthest);
    return {furthest.front(), "no type takes the text, none gets further than this one"};
  }
  if (broken.has_value()) Fail(input, *broken);
  return {nullptr, "expected --type, because the text begins with a field of no message"};
}

std::unique_ptr<Message> ReadMessage(const MessageText& input, const Descriptor& type) {
  return input.json ? ReadJson(input, input.text, type) : ReadText(input, type);
}

std::vector<std::unique_ptr<Message>> ReadMessages(const MessageText& input,
                                                   const Descriptor& type) {
  std::vector<std::unique_ptr<Message>> messages;
  if (!input.json) {
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
    throw InputError(input.file, "line 1, column 1", "expected a message, found none");
  return messages;
}

}  // namespace zorl2_inspect
