// Captures what the protobuf runtime logs while this object exists. Only one object may exist at a
// time, because a process has one log handler.
#pragma once

#include <google/protobuf/stubs/logging.h>

#include <string>
#include <utility>
#include <vector>

namespace zorl2_test {

class LogCapture {
 public:
  LogCapture() : previous_(google::protobuf::SetLogHandler(&Store)) { Messages().clear(); }
  ~LogCapture() { google::protobuf::SetLogHandler(previous_); }
  LogCapture(const LogCapture&) = delete;
  LogCapture& operator=(const LogCapture&) = delete;

  // Returns and removes the texts of the errors so far.
  static std::vector<std::string> TakeErrors() { return std::exchange(Messages(), {}); }

 private:
  static std::vector<std::string>& Messages() {
    static std::vector<std::string> messages;
    return messages;
  }

  static void Store(google::protobuf::LogLevel level, const char*, int,
                    const std::string& message) {
    if (level == google::protobuf::LOGLEVEL_ERROR) Messages().push_back(message);
  }

  google::protobuf::LogHandler* previous_;
};

}  // namespace zorl2_test
