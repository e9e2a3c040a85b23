#include "tools/text/json_writer.h"

#include <cmath>

#include "tools/text/error.h"
#include "tools/text/quoting.h"

namespace zorl2_inspect {

JsonWriter::JsonWriter(Output& out, Layout layout)
    : out_(out), layout_(layout), sink_{&out}, compact_(sink_), pretty_(sink_) {
  pretty_.SetIndent(' ', 2);
}

template <typename Function>
void JsonWriter::Do(Function function) {
  const bool begins = depth_ == 0;
  if (layout_ == Layout::kOneLine) {
    if (begins) compact_.Reset(sink_);
    function(compact_);
  } else {
    if (begins) pretty_.Reset(sink_);
    function(pretty_);
  }
}

void JsonWriter::BeginObject() {
  Do([](auto& writer) { writer.StartObject(); });
  ++depth_;
}

void JsonWriter::EndObject() {
  Do([](auto& writer) { writer.EndObject(); });
  if (--depth_ == 0) out_.Write('\n');
}

void JsonWriter::BeginArray() {
  Do([](auto& writer) { writer.StartArray(); });
  ++depth_;
}

void JsonWriter::EndArray() {
  Do([](auto& writer) { writer.EndArray(); });
  if (--depth_ == 0) out_.Write('\n');
}

void JsonWriter::Key(std::string_view name) {
  const auto size = static_cast<rapidjson::SizeType>(name.size());
  Do([&](auto& writer) { writer.Key(name.data(), size); });
}

void JsonWriter::Null() {
  Do([](auto& writer) { writer.Null(); });
}

void JsonWriter::Value(bool value) {
  Do([value](auto& writer) { writer.Bool(value); });
}

void JsonWriter::Value(double value) {
  // JSON has no infinities and no NaN.
  if (!std::isfinite(value)) return Null();
  Do([value](auto& writer) { writer.Double(value); });
}

void JsonWriter::Value(std::string_view text) {
  if (!IsUtf8(text)) return Bytes(text);
  const auto size = static_cast<rapidjson::SizeType>(text.size());
  Do([&](auto& writer) { writer.String(text.data(), size); });
}

void JsonWriter::Bytes(std::string_view bytes) {
  if (!reported_) {
    reported_ = true;
    PrintNote("texts that are not UTF-8 become {\"hex\": \"...\"} with their bytes");
  }
  BeginObject();
  Member("hex", Hex(bytes));
  EndObject();
}

void JsonWriter::Signed(std::int64_t value) {
  Do([value](auto& writer) { writer.Int64(value); });
}

void JsonWriter::Unsigned(std::uint64_t value) {
  Do([value](auto& writer) { writer.Uint64(value); });
}

}  // namespace zorl2_inspect
