#include "tools/input/message_text.h"

#include <fmt/format.h>
#include <google/protobuf/text_format.h>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "check/check.h"
#include "tools/input/json_reader.h"
#include "tools/input/text_parser.h"
#include "tools/model/check_text.h"
#include "tools/model/field_path.h"
#include "tools/model/message_types.h"
#include "tools/text/error.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::Message;
using google::protobuf::TextFormat;
using zorl2::check::Verdict;
using Messages = std::vector<std::unique_ptr<Message>>;

[[noreturn]] void Fail(const MessageText& input, const JsonProblem& problem) {
  throw Error(input.file, {0, std::nullopt, PlaceAt(input.text, problem.offset), problem.path,
                           problem.found, problem.expected});
}

// The path of the message that contains the field.
std::string_view MessagePart(std::string_view path) {
  const std::size_t dot = path.rfind('.');
  return dot == std::string_view::npos ? std::string_view() : path.substr(0, dot);
}

// Where the innermost message that contains the field begins.
TextPlace PlaceOfMessage(const Descriptor& type, const TextFormat::ParseInfoTree& places,
                         std::string_view path) {
  TextPlace best{1, 1};
  const TextFormat::ParseInfoTree* tree = &places;
  const FieldPath steps(type, path);
  for (const auto& [field, index] : steps.steps()) {
    if (tree == nullptr || field->message_type() == nullptr) break;
    const auto place = tree->GetLocation(field, index);
    if (place.line >= 0) {
      best = {static_cast<std::size_t>(place.line) + 1, static_cast<std::size_t>(place.column) + 1};
    }
    tree = tree->GetTreeForNested(field, index);
  }
  return best;
}

// Throws if `missing` is null.
void ReportMissing(const MessageText& input, const Verdict& verdict, TextPlace place,
                   std::optional<Problem>* missing) {
  Problem problem = RejectionOf(verdict);
  problem.place = place;
  if (missing == nullptr) throw Error(input.file, problem);
  if (!missing->has_value()) *missing = std::move(problem);
}

std::unique_ptr<Message> ReadText(const MessageText& input, const Descriptor& type,
                                  std::optional<Problem>* missing) {
  std::unique_ptr<Message> message = NewMessage(type);
  FirstTextError error;
  TextFormat::ParseInfoTree places;
  if (!ParseText(input.text, *message, error, &places)) {
    throw Error(input.file, {0, std::nullopt, error.place(), "", error.text(), ""});
  }
  const Verdict verdict = zorl2::check::Check(*message);
  if (IsIncomplete(verdict)) {
    ReportMissing(input, verdict, PlaceOfMessage(type, places, verdict.field), missing);
  }
  return message;
}

Messages ReadJsonMessages(const MessageText& input, const Descriptor& type,
                          std::optional<Problem>* missing) {
  Messages messages;
  const auto problem = ReadJson(input.text, type, JsonExtent::kAll, &messages);
  if (problem.has_value()) Fail(input, *problem);
  if (messages.empty()) throw Error(input.file, "no message", "a message");
  for (std::size_t i = 0; i < messages.size(); ++i) {
    const Verdict verdict = zorl2::check::Check(*messages[i]);
    if (!IsIncomplete(verdict)) continue;
    const std::size_t end = EndOfObject(input.text, type, i, MessagePart(verdict.field));
    ReportMissing(input, verdict, PlaceAt(input.text, end), missing);
  }
  return messages;
}

// Why a text is no message of a type, and how much of it is accepted.
struct Stop {
  std::size_t offset;
  std::string reason;
  std::optional<JsonProblem> problem;
};

std::optional<Stop> FirstStop(std::string_view text, bool json, const Descriptor& type) {
  if (json) {
    Messages messages;
    const auto problem = ReadJson(text, type, JsonExtent::kFirst, &messages);
    if (problem.has_value())
      return Stop{problem->offset, problem->path + problem->expected, problem};
    for (std::size_t i = 0; i < messages.size(); ++i) {
      const Verdict verdict = zorl2::check::Check(*messages[i]);
      if (!IsIncomplete(verdict)) continue;
      return Stop{EndOfObject(text, type, i, MessagePart(verdict.field)), verdict.field, {}};
    }
    return std::nullopt;
  }
  std::unique_ptr<Message> message = NewMessage(type);
  FirstTextError error;
  if (ParseText(text, *message, error)) {
    const Verdict verdict = zorl2::check::Check(*message);
    if (!IsIncomplete(verdict)) return std::nullopt;
    return Stop{text.size(), verdict.field, {}};
  }
  std::size_t offset = 0;
  for (std::size_t line = 1; line < error.place().line; ++line) {
    offset = text.find('\n', offset) + 1;
    if (offset == 0) return Stop{text.size(), error.text(), {}};
  }
  return Stop{offset + error.place().column - 1, error.text(), {}};
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

InferredType InferTypeOfText(const MessageText& input) {
  if (FirstField(input.text) == input.text.size() && !LooksLikeJson(input.text)) {
    return {nullptr, "an empty text may be of any type", false, 0};
  }
  std::vector<const Descriptor*> accepting;
  std::vector<const Descriptor*> furthest;
  std::size_t most = FirstField(input.text) + 1;
  std::set<std::string> reasons;
  std::set<std::string> all_reasons;
  std::optional<JsonProblem> same_problem;
  for (const Descriptor* type : MessageTypes()) {
    const auto stop = FirstStop(input.text, input.json, *type);
    if (stop.has_value()) {
      all_reasons.insert(stop->reason);
      same_problem = all_reasons.size() == 1 ? stop->problem : std::nullopt;
    }
    if (!stop.has_value()) {
      accepting.push_back(type);
    } else if (stop->offset >= most) {
      if (stop->offset > most) {
        furthest.clear();
        reasons.clear();
      }
      most = stop->offset;
      furthest.push_back(type);
      reasons.insert(stop->reason);
    }
  }
  if (accepting.size() == 1) return {accepting.front(), "no other type accepts the text", false, 0};
  if (accepting.size() > 1) return AmbiguousType(accepting);
  if (furthest.size() == 1) {
    return {furthest.front(), "no type accepts the text, this one accepts most of it", false, 0};
  }
  // If all types stop at the same place, none of them has accepted a field of its own.
  if (!furthest.empty() && furthest.size() < MessageTypes().size()) {
    if (reasons.size() > 1) return AmbiguousType(furthest);
    return {furthest.front(), "no type accepts the text, no other one accepts more of it", false,
            0};
  }
  // Text that is no JSON has the same problem for every type.
  if (same_problem) Fail(input, *same_problem);
  return {nullptr, "the text begins with a field of no message", false, 0};
}

std::unique_ptr<Message> ReadMessage(const MessageText& input, const Descriptor& type,
                                     std::optional<Problem>* missing) {
  if (!input.json) return ReadText(input, type, missing);
  Messages messages = ReadJsonMessages(input, type, missing);
  if (messages.size() != 1) {
    throw Error(input.file, fmt::format("{} messages", messages.size()),
                "one message; --delimited reads one from each line");
  }
  std::unique_ptr<Message> message = std::move(messages.front());
  return message;
}

Messages ReadMessages(const MessageText& input, const Descriptor& type) {
  if (input.json) return ReadJsonMessages(input, type, nullptr);
  Messages messages;
  messages.push_back(ReadText(input, type, nullptr));
  return messages;
}

}  // namespace zorl2_inspect
