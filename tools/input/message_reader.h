// The messages of an input, one after the other, with a report of what is wrong with each.
#pragma once

#include <google/protobuf/message.h>

#include <functional>
#include <utility>
#include <vector>

#include "check/check.h"
#include "tools/input/input.h"
#include "tools/text/error.h"

namespace zorl2_inspect {

// Reports on standard error and goes on, or, if strict, throws the first report as an Error.
class MessageReader {
 public:
  // `before_report` is called before a line is printed, so that the output before it appears
  // first. May be empty.
  MessageReader(Input& input, bool strict, std::function<void()> before_report);

  // Calls the function before each report, or error, of a record that is no message.
  void OnDamage(std::function<void(const Record& record, const Problem& problem)> function) {
    on_damage_ = std::move(function);
  }

  // Reads the next record that is a message of the type, even without its required fields. Reports
  // damage and records that are no message. A single input that is no message is always an Error.
  bool Next(Record& record, google::protobuf::Message& message);

  // Reports why elements of the record do not convert, the first of them with their place.
  void Report(const Record& record, const std::vector<zorl2::check::Verdict>& rejections);

  // kExitDifferent after a report, kExitError if the system could not read the input.
  int status() const { return status_; }

 private:
  void Report(const Problem& problem);

  Input& input_;
  bool strict_;
  std::function<void()> before_report_;
  std::function<void(const Record& record, const Problem& problem)> on_damage_;
  int status_ = kExitOk;
};

}  // namespace zorl2_inspect
