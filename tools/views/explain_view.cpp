#include "tools/views/explain_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/model/message_types.h"
#include "tools/text/quoting.h"
#include "tools/views/wire_value.h"
#include "tools/wire/wire_walker.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

constexpr std::size_t kBytesPerLine = 8;
constexpr std::size_t kBytesWidth = 3 * kBytesPerLine - 1;
constexpr std::size_t kPathWidth = 50;
constexpr std::size_t kTypeWidth = 23;

Colour ColourOf(Note::Kind kind) {
  switch (kind) {
    case Note::Kind::kNarrowed:
      return Colour::kYellow;
    case Note::Kind::kDefaulted:
      return Colour::kBlue;
    case Note::Kind::kDropped:
    case Note::Kind::kReplaced:
      return Colour::kMagenta;
    case Note::Kind::kMerged:
      return Colour::kCyan;
    default:
      return Colour::kRed;
  }
}

// The last field of the path; null for an unknown field. The path leads to a field of the container
// or, for the outermost message, of any message in it.
const FieldDescriptor* LastField(const Descriptor& root, const WireField& container,
                                 const std::string& path) {
  const Descriptor* type = container.field != nullptr ? container.field->message_type() : &root;
  const std::size_t dot = path.rfind('.');
  return type->FindFieldByName(dot == std::string::npos ? path : path.substr(dot + 1));
}

class Printer : public WireVisitor {
 public:
  Printer(std::string_view bytes, const Descriptor& type, std::size_t first_offset,
          const ExplainOptions& options, Output& out)
      : bytes_(bytes),
        type_(type),
        first_offset_(first_offset),
        options_(options),
        paint_(options.colours),
        out_(out) {
    const std::unique_ptr<Message> message = NewMessage(type);
    // The conversion of bytes that are no message is nothing to talk about.
    if (message->ParsePartialFromArray(bytes.data(), static_cast<int>(bytes.size()))) {
      checked_.emplace(*message);
      summary.verdict = checked_->verdict();
    }
  }

  void OnField(const WireField& field) override {
    ++summary.fields;
    std::vector<Note> notes = ParserNotes(field);
    if (checked_) {
      for (Note& note : checked_->Take(field)) notes.push_back(std::move(note));
    }
    Line(field.offset, field.raw, field.path, WireTypeText(field), WireValueText(field), notes);
  }

  void OnEnd(const WireField& container, std::size_t end) override {
    // Several occurrences of a message are complete only with the last one.
    if (!checked_ || container.kind != WireField::Kind::kMessage || container.later != kNowhere) {
      return;
    }
    for (const CheckNotes::Absent& absent : checked_->TakeAbsent(container.path)) {
      const FieldDescriptor* field = LastField(type_, container, absent.path);
      const bool is_list = field != nullptr && field->is_repeated();
      Line(end, {}, absent.path, field != nullptr ? SchemaTypeText(*field) : std::string(),
           is_list ? "" : "(absent)", {absent.note});
    }
  }

  void OnError(const Problem& problem) override {
    ++summary.errors;
    if (!summary.damage) summary.damage = problem;
    const std::size_t at = static_cast<std::size_t>(*problem.offset) - first_offset_;
    Start(*problem.offset, bytes_.substr(at, kBytesPerLine));
    out_.Print("{}\n", paint_(Colour::kRed,
                              fmt::format("{:<{}}  <- malformed: {} (expected {})", problem.path,
                                          kPathWidth, problem.found, problem.expected)));
  }

  ExplainSummary summary;

 private:
  void Start(std::size_t offset, std::string_view bytes) {
    out_.Print("{}  {:<{}}  ", paint_(Colour::kFaint, fmt::format("{:08x}", offset)), Hex(bytes),
               kBytesWidth);
  }

  void Line(std::size_t offset, std::string_view raw, std::string_view path, std::string_view type,
            std::string_view value, const std::vector<Note>& notes) {
    Start(offset, raw.substr(0, std::min(kBytesPerLine, options_.bytes)));
    out_.Print("{}  {:<{}}  {}", paint_(Colour::kCyan, fmt::format("{:<{}}", path, kPathWidth)),
               type, kTypeWidth, paint_(Colour::kBold, value));
    for (const Note& note : notes) {
      ++summary.notes[static_cast<std::size_t>(note.kind)];
      out_.Print("  {}", paint_(ColourOf(note.kind),
                                fmt::format("<- {}: {}", NoteName(note.kind), note.text)));
    }
    out_.Write('\n');
    for (std::size_t shown = kBytesPerLine; shown < std::min(raw.size(), options_.bytes);
         shown += kBytesPerLine) {
      const std::size_t count = std::min(kBytesPerLine, options_.bytes - shown);
      out_.Print("{}  {}\n", paint_(Colour::kFaint, fmt::format("{:08x}", offset + shown)),
                 Hex(raw.substr(shown, count)));
    }
    const std::size_t hidden = raw.size() - std::min(raw.size(), options_.bytes);
    if (hidden > 0) out_.Print("          ... {} more bytes\n", hidden);
  }

  std::string_view bytes_;
  const Descriptor& type_;
  std::size_t first_offset_;
  ExplainOptions options_;
  Palette paint_;
  Output& out_;
  std::optional<CheckNotes> checked_;
};

}  // namespace

ExplainSummary Explain(std::string_view bytes, const Descriptor& type, std::size_t first_offset,
                       const ExplainOptions& options, Output& out) {
  Printer printer(bytes, type, first_offset, options, out);
  WalkWire(bytes, type, first_offset, printer);
  return std::move(printer.summary);
}

}  // namespace zorl2_inspect
