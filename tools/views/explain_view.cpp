#include "tools/views/explain_view.h"

#include <fmt/format.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/model/message_types.h"
#include "tools/views/wire_value.h"
#include "tools/wire/wire_walker.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

// How many bytes of damage are shown.
constexpr std::size_t kDamagedBytes = 8;

// The last field of the path; null for an unknown field. The path leads to a field of the container
// or, for the outermost message, of any message in it.
const FieldDescriptor* LastField(const Descriptor& root, const WireField& container,
                                 const std::string& path) {
  const Descriptor* type = container.field != nullptr ? container.field->message_type() : &root;
  const std::size_t dot = path.rfind('.');
  return type->FindFieldByName(dot == std::string::npos ? path : path.substr(dot + 1));
}

class Explainer : public WireVisitor {
 public:
  Explainer(std::string_view bytes, const Descriptor& type, std::size_t first_offset,
            ExplainRows& rows)
      : bytes_(bytes), type_(type), first_offset_(first_offset), rows_(rows) {
    const std::unique_ptr<Message> message = NewMessage(type);
    // Bytes that are no message have no conversion to report.
    if (message->ParsePartialFromArray(bytes.data(), static_cast<int>(bytes.size()))) {
      checked_.emplace(*message);
      summary.verdict = checked_->verdict();
    }
  }

  void OnField(const WireField& field) override {
    ++summary.fields;
    ExplainRow row{field.offset,         field.raw, field.path,        WireTypeText(field),
                   WireValueText(field), &field,    ParserNotes(field)};
    if (checked_) {
      for (Note& note : checked_->Take(field)) row.notes.push_back(std::move(note));
    }
    Print(row);
  }

  void OnEnd(const WireField& container, std::size_t end) override {
    // A message that occurs several times is complete only with its last occurrence.
    if (!checked_ || container.kind != WireField::Kind::kMessage || container.later != kNowhere) {
      return;
    }
    for (const CheckNotes::Absent& absent : checked_->TakeAbsent(container.path)) {
      const FieldDescriptor* field = LastField(type_, container, absent.path);
      const bool is_list = field != nullptr && field->is_repeated();
      Print({end,
             {},
             absent.path,
             field != nullptr ? SchemaTypeText(*field) : std::string(),
             is_list ? "" : "(absent)",
             nullptr,
             {absent.note}});
    }
  }

  void OnError(const Problem& problem) override {
    if (!summary.damage) summary.damage = problem;
    const std::size_t at = static_cast<std::size_t>(*problem.offset) - first_offset_;
    const std::string text = fmt::format("{} (expected {})", problem.found, problem.expected);
    Print({static_cast<std::size_t>(*problem.offset),
           bytes_.substr(at, kDamagedBytes),
           problem.path,
           "",
           "",
           nullptr,
           {{Note::Kind::kMalformed, text}}});
  }

  ExplainSummary summary;

 private:
  void Print(const ExplainRow& row) {
    for (const Note& note : row.notes) ++summary.notes[static_cast<std::size_t>(note.kind)];
    rows_.Print(row);
  }

  std::string_view bytes_;
  const Descriptor& type_;
  std::size_t first_offset_;
  ExplainRows& rows_;
  std::optional<CheckNotes> checked_;
};

}  // namespace

ExplainSummary Explain(std::string_view bytes, const Descriptor& type, std::size_t first_offset,
                       ExplainRows& rows) {
  Explainer explainer(bytes, type, first_offset, rows);
  WalkWire(bytes, type, first_offset, explainer);
  return std::move(explainer.summary);
}

}  // namespace zorl2_inspect
