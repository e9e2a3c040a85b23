#include "tools/views/explain_rows.h"

#include <fmt/format.h>

#include <algorithm>

#include "tools/text/colours.h"
#include "tools/text/quoting.h"
#include "tools/text/wrap.h"

namespace zorl2_inspect {
namespace {

// Below this width the rows are a tree.
constexpr std::size_t kWide = 150;

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
    case Note::Kind::kPadded:
      return Colour::kCyan;
    default:
      return Colour::kRed;
  }
}

std::string NoteText(const Note& note) {
  return fmt::format("<- {}: {}", NoteName(note.kind), note.text);
}

class Rows : public ExplainRows {
 protected:
  Rows(const ExplainOptions& options, Output& out)
      : paint_(options.colours), most_(options.bytes), out_(out) {}

  void Start(const ExplainRow& row, std::size_t bytes) {
    out_.Print("{}  {:<{}}  ", paint_(Colour::kFaint, fmt::format("{:08x}", row.offset)),
               Hex(row.bytes.substr(0, std::min(bytes, most_))), 3 * bytes - 1);
  }

  // The bytes after the first ones.
  void Rest(const ExplainRow& row, std::size_t shown, std::size_t per_line) {
    const std::size_t end = std::min(row.bytes.size(), most_);
    for (; shown < end; shown += per_line) {
      out_.Print("{}  {}\n", paint_(Colour::kFaint, fmt::format("{:08x}", row.offset + shown)),
                 Hex(row.bytes.substr(shown, std::min(per_line, end - shown))));
    }
    if (row.bytes.size() > end) {
      out_.Print("          ... {} more bytes\n", row.bytes.size() - end);
    }
  }

  Palette paint_;
  std::size_t most_;
  Output& out_;
};

class WideRows : public Rows {
 public:
  WideRows(const ExplainOptions& options, Output& out) : Rows(options, out) {}

  void Print(const ExplainRow& row) override {
    Start(row, kBytes);
    out_.Print("{}  {:<{}}  {}", paint_(Colour::kCyan, fmt::format("{:<{}}", row.path, kPathWidth)),
               row.type, kTypeWidth, paint_(Colour::kBold, row.value));
    for (const Note& note : row.notes) {
      out_.Print("  {}", paint_(ColourOf(note.kind), NoteText(note)));
    }
    out_.Write('\n');
    Rest(row, kBytes, kBytes);
  }

 private:
  static constexpr std::size_t kBytes = 8;
  static constexpr std::size_t kPathWidth = 50;
  static constexpr std::size_t kTypeWidth = 23;
};

class TreeRows : public Rows {
 public:
  TreeRows(const ExplainOptions& options, Output& out)
      : Rows(options, out), width_(std::max(options.width, kNarrowest)) {}

  void Print(const ExplainRow& row) override {
    const std::size_t dot = row.path.rfind('.');
    const std::string name(dot == row.path.npos ? row.path : row.path.substr(dot + 1));
    const auto level = std::count(row.path.begin(), row.path.end(), '.');
    const std::size_t indent = std::min<std::size_t>(2 * static_cast<std::size_t>(level), 12);
    Start(row, kBytes);
    out_.Print("{:{}}{}", "", indent, paint_(Colour::kCyan, name));
    const std::size_t used = kBegin + indent + name.size() + 2;
    const std::size_t next = kBegin + indent + 2;
    if (used + row.value.size() <= width_) {
      if (!row.value.empty()) out_.Print("  {}", paint_(Colour::kBold, row.value));
      out_.Write('\n');
    } else {
      out_.Write('\n');
      Lines(row.value, Colour::kBold, next);
    }
    for (const Note& note : row.notes) Lines(NoteText(note), ColourOf(note.kind), next);
    Rest(row, kBytes, kBytesBelow);
  }

 private:
  static constexpr std::size_t kNarrowest = 60;
  static constexpr std::size_t kBytes = 4;
  static constexpr std::size_t kBytesBelow = 16;
  static constexpr std::size_t kBegin = 8 + 2 + 3 * kBytes - 1 + 2;

  void Lines(const std::string& text, Colour colour, std::size_t indent) {
    for (const std::string& line : Wrap(text, width_ - indent, width_ - indent)) {
      out_.Print("{:{}}{}\n", "", indent, paint_(colour, line));
    }
  }

  std::size_t width_;
};

}  // namespace

std::unique_ptr<ExplainRows> TextRows(const ExplainOptions& options, Output& out) {
  if (options.width == 0 || options.width >= kWide) return std::make_unique<WideRows>(options, out);
  return std::make_unique<TreeRows>(options, out);
}

}  // namespace zorl2_inspect
