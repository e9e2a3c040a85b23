#include "tools/text_parser.h"

#include <fmt/format.h>
#include <google/protobuf/io/zero_copy_stream_impl_lite.h>

#include <algorithm>

namespace zorl2_inspect {

TextPlace PlaceAt(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, std::min(offset, text.size()));
  const std::size_t newline = before.rfind('\n');
  const std::string_view line =
      newline == std::string_view::npos ? before : before.substr(newline + 1);
  const auto continues = [](char c) { return (static_cast<unsigned char>(c) & 0xc0) == 0x80; };
  const auto lines = std::count(before.begin(), before.end(), '\n');
  const auto extra = std::count_if(line.begin(), line.end(), continues);
  return {static_cast<std::size_t>(lines) + 1, line.size() - static_cast<std::size_t>(extra) + 1};
}

std::string PlaceText(TextPlace place) {
  return fmt::format("line {}, column {}", place.line, place.column);
}

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
