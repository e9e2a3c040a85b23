// Reads the protobuf text format with the runtime's parser, and says where a text stands.
#pragma once

#include <google/protobuf/io/tokenizer.h>
#include <google/protobuf/message.h>
#include <google/protobuf/text_format.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace zorl2_inspect {

// Counted from 1, columns in characters.
struct TextPlace {
  std::size_t line;
  std::size_t column;
};

TextPlace PlaceAt(std::string_view text, std::size_t offset);

// "line 2, column 5"
std::string PlaceText(TextPlace place);

// Keeps the first error, and reads on silently.
class FirstTextError : public google::protobuf::io::ErrorCollector {
 public:
  void AddError(int line, google::protobuf::io::ColumnNumber column,
                const std::string& text) override;
  void AddWarning(int, google::protobuf::io::ColumnNumber, const std::string&) override {}

  // The first place of all without an error.
  TextPlace place() const { return place_; }
  const std::string& text() const { return text_; }

 private:
  bool found_ = false;
  TextPlace place_{1, 1};
  std::string text_;
};

// False when the text is no message of this type: `error` has the reason then, the message what was
// read before it. A required field that is missing is no error. `places`, which may be null,
// receives where each field stands.
bool ParseText(std::string_view text, google::protobuf::Message& message, FirstTextError& error,
               google::protobuf::TextFormat::ParseInfoTree* places = nullptr);

}  // namespace zorl2_inspect
