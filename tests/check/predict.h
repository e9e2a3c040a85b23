// Compares the verdict and the losses of zorl2::check with what the converter does.
#pragma once

#include <google/protobuf/dynamic_message.h>
#include <google/protobuf/util/message_differencer.h>

#include <memory>
#include <string>
#include <vector>

#include "check/check.h"
#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "convert/lag_member_converter.h"
#include "convert/zorid_converter.h"
#include "tests/differential/compare.h"

namespace proof {

namespace check = zorl2::check;

inline std::string Text(const check::Verdict& verdict) {
  return std::to_string(static_cast<int>(verdict.outcome)) + " " + std::string(verdict.rule) + " " +
         verdict.field + ": " + verdict.reason;
}

inline std::string Text(const std::vector<check::Loss>& losses) {
  std::string text;
  for (const check::Loss& loss : losses) {
    text += std::to_string(static_cast<int>(loss.kind)) + " " + loss.field + ": " + loss.before +
            " -> " + loss.after + "\n";
  }
  return text;
}

// How a conversion ends that does not terminate the process, in the words of Ending().
inline std::string ExpectedEnding(const check::Verdict& verdict) {
  if (verdict.outcome == check::Outcome::kConverts) return "true";
  if (verdict.outcome == check::Outcome::kReturnsFalse) return "false";
  return verdict.rule == "enum.unlisted" ? Name(oracle::Outcome::kInvalidKey)
                                         : Name(oracle::Outcome::kMapAt);
}

// Checks that the verdict on a message without a required field names the same field as the
// runtime.
inline std::string WrongField(const google::protobuf::Message& message,
                              const check::Verdict& verdict) {
  if (message.IsInitialized() == (verdict.rule != "required")) {
    if (verdict.rule != "required") return {};
    std::vector<std::string> missing;
    message.FindInitializationErrors(&missing);
    if (missing.front() == verdict.field) return {};
  }
  return "missing fields: " + message.InitializationErrorString() + "\n";
}

// Compares the results for the message with those for a DynamicMessage of the same bytes.
inline std::string WrongDynamic(const google::protobuf::Message& message) {
  static google::protobuf::DynamicMessageFactory factory;
  const std::unique_ptr<google::protobuf::Message> parsed(message.New());
  const std::unique_ptr<google::protobuf::Message> dynamic(
      factory.GetPrototype(message.GetDescriptor())->New());
  // An unlisted value that both keep among the unknown fields has 32 bits in a DynamicMessage.
  if (!dynamic->ParsePartialFromString(message.SerializePartialAsString()) ||
      !parsed->ParsePartialFromString(dynamic->SerializePartialAsString())) {
    return "its bytes do not parse\n";
  }
  const std::string expected =
      Text(check::Check(*parsed)) + "\n" + Text(check::FindLosses(*parsed));
  const std::string actual =
      Text(check::Check(*dynamic)) + "\n" + Text(check::FindLosses(*dynamic));
  return actual == expected ? "" : "dynamic: " + actual + "instead of: " + expected;
}

// Returns an empty text if Check() and FindLosses() are right about the message.
// `ends_process(message)` converts it and returns whether that terminates the process.
template <typename Converter, typename Record, typename Message, typename EndsProcess>
std::string WrongPrediction(const Message& message, const EndsProcess& ends_process) {
  const check::Verdict verdict = check::Check(message);
  const std::vector<check::Loss> losses = check::FindLosses(message);
  std::string wrong = WrongField(message, verdict) + WrongDynamic(message);
  const google::protobuf::Message& any = message;
  if (Text(check::Check(any)) != Text(verdict)) wrong += "the type at run time\n";

  Record record{};
  if (verdict.outcome == check::Outcome::kEndsProcess) {
    if (!ends_process(message)) wrong += "the process does not end\n";
  } else {
    const std::string ending = Ending([&] { return Converter().Convert(message, record); });
    if (ending != ExpectedEnding(verdict)) wrong += "ending: " + ending + "\n";
  }
  if (verdict.outcome == check::Outcome::kConverts) {
    Message back;
    Converter().Convert(record, back);
    const bool equal = google::protobuf::util::MessageDifferencer::Equals(message, back);
    if (equal != losses.empty()) wrong += "and back: " + back.ShortDebugString() + "\n";
  } else if (!losses.empty()) {
    wrong += "losses of a message that does not convert\n";
  }
  if (wrong.empty()) return {};
  return wrong + "message: " + message.ShortDebugString() +
         "\nbytes: " + Hex(message.SerializePartialAsString()) + "\nverdict: " + Text(verdict) +
         "\nlosses: " + Text(losses);
}

// Does the same for a record.
template <typename Converter, typename Message, typename Record>
std::string WrongPredictionOfRecord(const Record& record) {
  const check::Verdict verdict = check::Check(record);
  const std::vector<check::Loss> losses = check::FindLosses(record);
  std::string wrong;
  Message message;
  const std::string ending = Ending([&] { return Converter().Convert(record, message); });
  if (ending != ExpectedEnding(verdict)) wrong += "ending: " + ending + "\n";
  if (verdict.outcome == check::Outcome::kConverts) {
    Record back{};
    Converter().Convert(message, back);
    if ((Text(back) == Text(record)) != losses.empty()) wrong += "back: " + Text(back) + "\n";
  } else if (!losses.empty()) {
    wrong += "losses of a record that does not convert\n";
  }
  if (wrong.empty()) return {};
  return wrong + "record: " + Text(record) + "\nverdict: " + Text(verdict) +
         "\nlosses: " + Text(losses);
}

}  // namespace proof
