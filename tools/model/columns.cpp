#include "tools/model/columns.h"

#include <fmt/format.h>

#include <algorithm>

#include "interface_entry.pb.h"
#include "tools/model/elements.h"
#include "tools/model/field_text.h"
#include "tools/model/value_text.h"
#include "tools/text/error.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

constexpr std::size_t kMostValues = 8;

// The column of the usual table that shows the field; null if none does.
const EntryColumn* UsualColumn(const FieldName& field) {
  const std::string path = field.text() == "block" ? "blockInfo" : field.path().text();
  const auto& columns = EntryColumns();
  const auto found = std::find_if(columns.begin(), columns.end(),
                                  [&](const EntryColumn& column) { return path == column.path; });
  return found == columns.end() ? nullptr : &*found;
}

bool IsNumber(const FieldDescriptor& field) {
  switch (field.cpp_type()) {
    case FieldDescriptor::CPPTYPE_MESSAGE:
    case FieldDescriptor::CPPTYPE_STRING:
    case FieldDescriptor::CPPTYPE_ENUM:
    case FieldDescriptor::CPPTYPE_BOOL:
      return false;
    default:
      return !field.is_repeated();
  }
}

// The values of the field, separated by commas.
RowValue Values(const Message& element, const FieldName& field) {
  std::string text;
  std::size_t count = 0;
  field.ForEach(element, [&](const Message& parent, int index) {
    if (++count > kMostValues) return;
    text += (count > 1 ? ", " : "") + ValueText(parent, field.field(), index);
  });
  if (count == 0) return {"-"};
  if (count > kMostValues) text += fmt::format(", ... ({})", count);
  return {std::move(text)};
}

}  // namespace

Columns::Columns(const Descriptor& record, std::string_view list) : list_(ListOf(record)) {
  for (std::size_t begin = 0; begin <= list.size();) {
    const std::size_t end = std::min(list.find(',', begin), list.size());
    const std::string name(Trimmed(list.substr(begin, end - begin)));
    fields_.emplace_back(record, name, "--columns");
    shown_.emplace_back(fields_.back().path());
    if (list_ != nullptr && !fields_.back().of_element()) {
      throw Error(
          "--columns", name,
          fmt::format("a field of the elements, of type {}", list_->message_type()->name()));
    }
    begin = end + 1;
  }
}

std::vector<std::string> Columns::Titles() const {
  std::vector<std::string> titles;
  for (const FieldName& field : fields_) {
    const EntryColumn* usual = UsualColumn(field);
    const auto& names = ShortNames();
    const bool is_short = std::find(names.begin(), names.end(), field.text()) != names.end();
    if (is_short && usual != nullptr) {
      titles.push_back((usual->is_number ? ">" : "") + std::string(usual->title));
    } else {
      titles.push_back((IsNumber(field.field()) ? ">" : "") +
                       (is_short ? Uppercase(field.text()) : field.text()));
    }
  }
  return titles;
}

EntryRow Columns::Row(const Message& element) const {
  std::vector<RowValue> values;
  values.reserve(fields_.size());
  const bool is_entry = element.GetDescriptor() == pb::IntfEntry::descriptor();
  for (const FieldName& field : fields_) {
    const EntryColumn* column = is_entry ? UsualColumn(field) : nullptr;
    values.push_back(column != nullptr ? column->value(static_cast<const pb::IntfEntry&>(element))
                                       : Values(element, field));
  }
  return MakeRow(element, shown_, std::move(values));
}

std::vector<EntryRow> Columns::Rows(const Message& record) const {
  if (list_ == nullptr) return {Row(record)};
  std::vector<EntryRow> rows;
  const auto& reflection = *record.GetReflection();
  const int size = reflection.FieldSize(record, list_);
  rows.reserve(static_cast<std::size_t>(size));
  for (int i = 0; i < size; ++i) {
    rows.push_back(Row(reflection.GetRepeatedMessage(record, list_, i)));
  }
  return rows;
}

}  // namespace zorl2_inspect
