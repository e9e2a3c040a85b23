// Reads the protobuf text format with the runtime's parser.
#pragma once

#include <google/protobuf/io/tokenizer.h>
#include <google/protobuf/message.h>
#include <google/protobuf/text_format.h>

#include <string>
#include <string_view>

#include "tools/text/text_place.h"

namespace zorl2_inspect {

// Keeps the first error.
class FirstTextError : public google::protobuf::io::ErrorCollector {
 public:
  void AddError(int line, google::protobuf::io::ColumnNumber column,
                const std::string& text) override;
  void AddWarning(int, google::protobuf::io::ColumnNumber, const std::string&) override {}

  // The beginning of the text if there is no error.
  TextPlace place() const { return place_; }
  const std::string& text() const { return text_; }

 private:
  bool found_ = false;
  TextPlace place_{1, 1};
  std::string text_;
};

// Returns false if the text is no message of this type; `error` is then the reason, and the message
// has what was read before it. A required field may be missing. `places`, which may be null, gets
// the place of each field.
bool ParseText(std::string_view text, google::protobuf::Message& message, FirstTextError& error,
               google::protobuf::TextFormat::ParseInfoTree* places = nullptr);

}  // namespace zorl2_inspect
