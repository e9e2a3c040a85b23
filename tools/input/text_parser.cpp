#include "tools/input/text_parser.h"

#include <google/protobuf/io/zero_copy_stream_impl_lite.h>

#include <algorithm>

namespace zorl2_inspect {

void FirstTextError::AddError(int line, google::protobuf::io::ColumnNumber column,
                              const std::string& text) {
  if (found_) return;
  found_ = true;
  place_ = {static_cast<std::size_t>(std::max(line, 0)) + 1,
            static_cast<std::size_t>(std::max(column, 0)) + 1};
  text_ = text;
}

bool ParseText(std::string_view text, google::protobuf::Message& message, FirstTextError& error,
               google::protobuf::TextFormat::ParseInfoTree* places) {
  google::protobuf::TextFormat::Parser parser;
  parser.RecordErrorsTo(&error);
  parser.WriteLocationsTo(places);
  parser.AllowPartialMessage(true);
  parser.SetRecursionLimit(100);
  google::protobuf::io::ArrayInputStream in(text.data(), static_cast<int>(text.size()));
  return parser.Parse(&in, &message);
}

}  // namespace zorl2_inspect
