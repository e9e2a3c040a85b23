// Matchers for messages. They compare field by field, including unknown fields, and print only the
// differences.
#pragma once

#include <gmock/gmock.h>
#include <google/protobuf/message.h>
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>

#include <ostream>
#include <stdexcept>
#include <string>

namespace zorl2_test {

// The message that the text form describes; a required field may be missing. A text that does not
// parse is a mistake in the test and throws.
template <typename Proto>
Proto FromText(const std::string& text) {
  google::protobuf::TextFormat::Parser parser;
  parser.AllowPartialMessage(true);
  Proto message;
  if (!parser.ParseFromString(text, &message)) {
    throw std::invalid_argument("not a " + Proto::descriptor()->full_name() + ": " + text);
  }
  return message;
}

// What changes from expected to actual, one line per field; empty when they are equal. An absent
// field is not the same as one that holds its default.
inline std::string MessageDifference(const google::protobuf::Message& expected,
                                     const google::protobuf::Message& actual) {
  if (expected.GetDescriptor() != actual.GetDescriptor()) {
    return "expected a " + expected.GetTypeName() + ", got a " + actual.GetTypeName() + "\n";
  }
  google::protobuf::util::MessageDifferencer differencer;
  std::string report;
  differencer.ReportDifferencesToString(&report);
  if (differencer.Compare(expected, actual)) return "";
  return report.empty() ? "they differ\n" : report;
}

template <typename Proto>
class EqualsMessageMatcher {
 public:
  using is_gtest_matcher = void;

  explicit EqualsMessageMatcher(const Proto& expected) : expected_(expected) {}

  bool MatchAndExplain(const google::protobuf::Message& actual, std::ostream* listener) const {
    const std::string difference = MessageDifference(expected_, actual);
    if (listener != nullptr && !difference.empty()) {
      *listener << "where this differs from the expected message:\n" << difference;
    }
    return difference.empty();
  }

  void DescribeTo(std::ostream* out) const {
    *out << "equals this " << expected_.GetTypeName() << ": " << expected_.ShortDebugString();
  }
  void DescribeNegationTo(std::ostream* out) const {
    *out << "differs from this " << expected_.GetTypeName() << ": " << expected_.ShortDebugString();
  }

 private:
  Proto expected_;
};

// EXPECT_THAT(actual, EqualsMessage(expected))
template <typename Proto>
EqualsMessageMatcher<Proto> EqualsMessage(const Proto& expected) {
  return EqualsMessageMatcher<Proto>(expected);
}

// EXPECT_THAT(actual, EqualsText<pb::Zorid>("value: 1 value: 2"))
template <typename Proto>
EqualsMessageMatcher<Proto> EqualsText(const std::string& text) {
  return EqualsMessageMatcher<Proto>(FromText<Proto>(text));
}

}  // namespace zorl2_test
