#include "tools/explain.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <system_error>
#include <vector>

#include "tools/plain_text.h"
#include "tools/wire_walker.h"

namespace zorl2_inspect {
namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;

constexpr std::size_t kBytesPerLine = 8;
constexpr std::size_t kBytesWidth = 3 * kBytesPerLine - 1;
constexpr std::size_t kPathWidth = 50;
constexpr std::size_t kTypeWidth = 23;
constexpr std::size_t kOutputBuffer = 1 << 16;

std::string ShownType(const FieldDescriptor& field) {
  if (field.type() == FieldDescriptor::TYPE_MESSAGE) return field.message_type()->name();
  if (field.type() == FieldDescriptor::TYPE_ENUM) return "enum " + field.enum_type()->name();
  return field.type_name();
}

std::string TypeOf(const WireField& field) {
  if (field.field == nullptr) return fmt::format("unknown, {}", WireTypeName(field.wire_type));
  const std::string name = ShownType(*field.field);
  return field.kind == WireField::Kind::kPacked ? "packed " + name : name;
}

Colour ColourOf(Note::Kind kind) {
  switch (kind) {
    case Note::Kind::kNarrowed:
      return Colour::kYellow;
    case Note::Kind::kDefaulted:
      return Colour::kBlue;
    case Note::Kind::kDropped:
      return Colour::kMagenta;
    case Note::Kind::kMerged:
      return Colour::kCyan;
    default:
      return Colour::kRed;
  }
}

class Printer : public WireVisitor {
 public:
  Printer(std::string_view bytes, const Descriptor& type, std::size_t first_offset,
          const ExplainOptions& options, std::FILE* out)
      : bytes_(bytes),
        first_offset_(first_offset),
        options_(options),
        paint_(options.colours),
        out_(out),
        annotator_(type) {}

  void OnField(const WireField& field) override {
    ++summary_.fields;
    notes_.clear();
    const std::string value = annotator_.Read(field, &notes_);
    Line(field.offset, field.raw, field.path, TypeOf(field), value, notes_);
  }

  void OnEnd(const WireField& container, std::size_t end) override {
    annotator_.End(
        container, [&](const FieldDescriptor& field, const std::string& path, const Note& note) {
          if (field.is_required()) {
            ++summary_.missing;
            Problem(
                fmt::format("offset {:#x}: {}: expected the required field, found the end of the "
                            "message",
                            end, path));
          }
          const bool there = field.is_repeated();
          Line(end, {}, path, ShownType(field), there ? "" : "(absent)", {note});
        });
  }

  void OnError(const WireError& error) override {
    ++summary_.errors;
    Problem(fmt::format("offset {:#x}: {}{}expected {}, found {}", error.offset, error.path,
                        error.path.empty() ? "" : ": ", error.expected, error.found));
    const std::size_t at = error.offset - first_offset_;
    const std::string_view bytes = bytes_.substr(at, kBytesPerLine);
    Start(error.offset, bytes);
    Put(paint_(Colour::kRed, fmt::format("{:<{}}  <- malformed: expected {}, found {}", error.path,
                                         kPathWidth, error.expected, error.found)));
    Put("\n");
  }

  void Flush() {
    if (std::fwrite(buffer_.data(), 1, buffer_.size(), out_) != buffer_.size()) {
      throw std::system_error(errno, std::generic_category());
    }
    buffer_.clear();
  }

  ExplainSummary& summary() { return summary_; }

 private:
  void Problem(std::string text) {
    if (summary_.problem.empty()) summary_.problem = std::move(text);
  }

  void Put(std::string_view text) {
    buffer_ += text;
    if (buffer_.size() >= kOutputBuffer) Flush();
  }

  void Start(std::size_t offset, std::string_view bytes) {
    Put(paint_(Colour::kFaint, fmt::format("{:08x}", offset)));
    Put(fmt::format("  {:<{}}  ", Hex(bytes), kBytesWidth));
  }

  void Line(std::size_t offset, std::string_view raw, std::string_view path, std::string_view type,
            std::string_view value, const std::vector<Note>& notes) {
    Start(offset, raw.substr(0, std::min(kBytesPerLine, options_.bytes)));
    Put(paint_(Colour::kCyan, fmt::format("{:<{}}", path, kPathWidth)));
    Put(fmt::format("  {:<{}}  ", type, kTypeWidth));
    Put(paint_(Colour::kBold, value));
    for (const Note& note : notes) {
      ++summary_.notes[static_cast<std::size_t>(note.kind)];
      Put("  ");
      Put(paint_(ColourOf(note.kind), fmt::format("<- {}: {}", NoteName(note.kind), note.text)));
    }
    Put("\n");
    std::size_t shown = kBytesPerLine;
    for (; shown < raw.size() && shown < options_.bytes; shown += kBytesPerLine) {
      const std::size_t count = std::min(kBytesPerLine, options_.bytes - shown);
      Start(offset + shown, raw.substr(shown, count));
      buffer_.erase(buffer_.find_last_not_of(' ') + 1);
      Put("\n");
    }
    const std::size_t hidden = raw.size() - std::min(raw.size(), options_.bytes);
    if (hidden > 0) Put(fmt::format("          ... {} more bytes\n", hidden));
  }

  std::string_view bytes_;
  std::size_t first_offset_;
  ExplainOptions options_;
  Palette paint_;
  std::FILE* out_;
  Annotator annotator_;
  std::vector<Note> notes_;
  std::string buffer_;
  ExplainSummary summary_;
};

}  // namespace

ExplainSummary Explain(std::string_view bytes, const Descriptor& type, std::size_t first_offset,
                       const ExplainOptions& options, std::FILE* out) {
  Printer printer(bytes, type, first_offset, options, out);
  WalkWire(bytes, type, first_offset, printer);
  printer.Flush();
  return std::move(printer.summary());
}

}  // namespace zorl2_inspect
