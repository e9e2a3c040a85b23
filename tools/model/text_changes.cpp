#include "tools/model/text_changes.h"

#include <algorithm>
#include <cstdint>

#include "tools/text/quoting.h"

namespace zorl2_inspect {
namespace {

// Beyond this many pairs of lines between the first and the last difference, all of them are
// replaced: finding those that remain takes quadratic time and memory.
constexpr std::size_t kMostPairs = 4'000'000;
// How much of a long text is shown before the first difference, and in all.
constexpr std::size_t kContext = 40;
constexpr std::size_t kShown = 200;

using Lines = std::vector<std::string_view>;

Lines Split(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    // A line includes its line feed, so that a text that does not end with one differs.
    const std::size_t size = std::min(end + 1, text.size());
    lines.push_back(text.substr(0, size));
    text.remove_prefix(size);
  }
  return lines;
}

// The lengths of the longest common subsequences of the lines after each pair of places.
class Common {
 public:
  Common(const Lines& before, const Lines& after, std::size_t begin, std::size_t before_end,
         std::size_t after_end)
      : begin_(begin), columns_(after_end - begin + 1) {
    lengths_.resize((before_end - begin + 1) * columns_);
    for (std::size_t i = before_end; i-- > begin;) {
      for (std::size_t j = after_end; j-- > begin;) {
        At(i, j) =
            before[i] == after[j] ? At(i + 1, j + 1) + 1 : std::max(At(i + 1, j), At(i, j + 1));
      }
    }
  }

  std::uint32_t& At(std::size_t i, std::size_t j) {
    return lengths_[(i - begin_) * columns_ + (j - begin_)];
  }

 private:
  std::size_t begin_;
  std::size_t columns_;
  std::vector<std::uint32_t> lengths_;
};

std::string Excerpt(std::string_view text, std::size_t difference) {
  std::size_t begin = difference > kContext ? difference - kContext : 0;
  // Do not begin inside a UTF-8 character.
  while (begin > 0 && (static_cast<unsigned char>(text[begin]) & 0xc0) == 0x80) --begin;
  const std::string_view part = text.substr(begin, kShown);
  std::string shown = (begin > 0 ? "..." : "") + Quoted(part);
  if (begin + part.size() < text.size()) shown += "...";
  return shown;
}

}  // namespace

std::vector<LineChange> CompareLines(std::string_view before, std::string_view after) {
  const Lines old_lines = Split(before);
  const Lines new_lines = Split(after);
  std::size_t old_end = old_lines.size();
  std::size_t new_end = new_lines.size();
  std::size_t begin = 0;
  while (begin < old_end && begin < new_end && old_lines[begin] == new_lines[begin]) ++begin;
  while (begin < old_end && begin < new_end && old_lines[old_end - 1] == new_lines[new_end - 1]) {
    --old_end;
    --new_end;
  }
  const bool pairs = (old_end - begin + 1) <= kMostPairs / (new_end - begin + 1);
  Common common(old_lines, new_lines, begin, pairs ? old_end : begin, pairs ? new_end : begin);
  std::vector<LineChange> changes;
  std::size_t i = begin;
  std::size_t j = begin;
  while (i < old_end || j < new_end) {
    if (pairs && i < old_end && j < new_end && old_lines[i] == new_lines[j]) {
      ++i;
      ++j;
    } else if (i < old_end &&
               (!pairs || j == new_end || common.At(i + 1, j) >= common.At(i, j + 1))) {
      changes.push_back({false, i + 1, old_lines[i]});
      ++i;
    } else {
      changes.push_back({true, j + 1, new_lines[j]});
      ++j;
    }
  }
  return changes;
}

Excerpts Differing(std::string_view before, std::string_view after) {
  const auto place = std::mismatch(before.begin(), before.end(), after.begin(), after.end());
  const auto difference = static_cast<std::size_t>(place.first - before.begin());
  return {Excerpt(before, difference), Excerpt(after, difference)};
}

}  // namespace zorl2_inspect
