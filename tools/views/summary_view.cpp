#include "tools/views/summary_view.h"

#include <fmt/format.h>
#include <google/protobuf/descriptor.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "tools/model/check_text.h"
#include "tools/text/quoting.h"
#include "tools/text/table.h"
#include "tools/views/panel_view.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;
using google::protobuf::EnumDescriptor;

constexpr std::size_t kWidth = 80;
constexpr std::size_t kLabel = 10;
constexpr std::size_t kMostOdd = 4;
constexpr std::size_t kLongestName = 24;

class Screen {
 public:
  Screen(const Palette& paint, Output& out) : paint_(paint), out_(out) {}

  // Prints "label     start item, item, ... (3 more)": as many items as fit, and the number of the
  // others, which includes the `left_out` items that the caller does not pass.
  void Line(const char* label, const std::string& start, const std::vector<Cell>& items = {},
            std::uint64_t left_out = 0) {
    std::string line = paint_(Colour::kBold, fmt::format("{:<{}}", label, kLabel));
    const std::string shown_start = Cut(start, kWidth - kLabel);
    line += shown_start;
    std::size_t width = kLabel + Width(shown_start);
    const bool all_fit = left_out == 0 && Fit(shown_start, items);
    std::size_t i = 0;
    for (; i < items.size(); ++i) {
      const std::size_t next = width + (i == 0 ? 0 : 2) + Width(items[i].text);
      // The count of the remaining items must fit, too.
      const std::uint64_t left = items.size() - i - 1 + left_out;
      if (!all_fit && next + (left == 0 ? 0 : 2 + More(left).size()) > kWidth) break;
      if (i > 0) line += ", ";
      line += paint_(items[i].colour, items[i].text);
      width = next;
    }
    const std::uint64_t left = items.size() - i + left_out;
    if (left > 0) line += (i == 0 ? "" : ", ") + More(left);
    out_.Print("{}\n", line);
  }

  // Whether such a line has room for all items.
  static bool Fit(const std::string& start, const std::vector<Cell>& items) {
    std::size_t width = kLabel + Width(start);
    for (const Cell& item : items) width += Width(item.text) + 2;
    return width <= kWidth + 2;
  }

 private:
  static std::string More(std::uint64_t count) { return fmt::format("... ({} more)", count); }

  const Palette& paint_;
  Output& out_;
};

template <typename Counts>
std::vector<Cell> CountsOf(const EnumDescriptor* type, const Counts& counts) {
  std::vector<Cell> items;
  for (int i = 0; i < type->value_count(); ++i) {
    const auto count = counts[static_cast<std::size_t>(type->value(i)->number())];
    if (count > 0) items.emplace_back(fmt::format("{} {}", type->value(i)->name(), count));
  }
  return items;
}

// "up 45", "down 12"; the first value of each of these enumerations is the good one.
template <typename Counts>
std::vector<Cell> UpAndDown(const Counts& counts) {
  std::vector<Cell> items;
  if (counts[0] > 0) items.emplace_back(fmt::format("up {}", counts[0]), Colour::kGreen);
  if (counts[1] > 0) items.emplace_back(fmt::format("down {}", counts[1]), Colour::kRed);
  return items;
}

std::string Name(const std::string& name) { return QuotedUnlessPlain(name, kLongestName); }

// "LACP 3 (ge-0/0/48, ...)", with so many names.
Cell Holder(pb::ProtocolType protocol, const Examples& held, std::size_t names) {
  std::string text = fmt::format("{} {}", pb::ProtocolType_Name(protocol), held.count);
  for (std::size_t i = 0; i < names; ++i) text += (i == 0 ? " (" : ", ") + Name(held.names[i]);
  if (names > 0) text += held.count > names ? ", ...)" : ")";
  return Cell(std::move(text), Colour::kRed);
}

// Names all protocols, with as many of their ports as there is room for.
void PrintHeld(Screen& screen, const char* label, std::uint64_t ports,
               const std::array<Examples, pb::ProtocolType_ARRAYSIZE>& by) {
  if (ports == 0) {
    screen.Line(label, "none");
    return;
  }
  std::vector<pb::ProtocolType> holders;
  std::vector<std::size_t> names;
  std::vector<Cell> items;
  for (std::size_t i = 0; i < by.size(); ++i) {
    if (by[i].count == 0) continue;
    holders.push_back(static_cast<pb::ProtocolType>(i));
    names.push_back(by[i].names.size());
    items.push_back(Holder(holders.back(), by[i], names.back()));
  }
  const std::string start = fmt::format("{}: ", ports);
  while (!Screen::Fit(start, items)) {
    // The last of those that have most names.
    const auto most = std::max_element(names.rbegin(), names.rend());
    if (*most == 0) break;
    --*most;
    const auto i = static_cast<std::size_t>(names.rend() - most) - 1;
    items[i] = Holder(holders[i], by[static_cast<std::size_t>(holders[i])], *most);
  }
  screen.Line(label, start, items);
}

void PrintOdd(Screen& screen, const OddValues& values) {
  const std::vector<OddValues::Odd> all = values.Find();
  if (all.empty()) screen.Line("odd", "none");
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (i + 1 == kMostOdd && all.size() > kMostOdd) {
      screen.Line("odd", fmt::format("and {} more; --json has all", all.size() - i));
      return;
    }
    const OddValues::Odd& odd = all[i];
    std::vector<Cell> items;
    for (const auto& [name, value] : odd.examples) {
      items.emplace_back(fmt::format("{} {}", Name(name), OddValues::ValueText(odd.field, value)),
                         Colour::kYellow);
    }
    screen.Line(
        "odd",
        fmt::format("{} not {}, {} of {} {} {}: ", OddValues::FieldName(odd.field),
                    OddValues::ValueText(odd.field, odd.usual), odd.unlike, odd.entries,
                    pb::InterfaceCategory_Name(odd.category), pb::InterfaceType_Name(odd.type)),
        items, odd.unlike - odd.examples.size());
  }
}

std::vector<Cell> Losses(const ListSummary& list) {
  std::vector<Cell> items;
  for (std::size_t i = 0; i < list.lost.size(); ++i) {
    const auto kind = static_cast<zorl2::check::LossKind>(i);
    const bool harmless = kind == zorl2::check::LossKind::kDefaulted;
    if (list.lost[i] == 0) continue;
    items.emplace_back(fmt::format("{} {}", LossKindName(kind), list.lost[i]),
                       harmless ? Colour::kPlain : Colour::kYellow);
  }
  return items;
}

std::string Title(const SummaryReport& report) {
  const ListSummary& list = report.list;
  std::string text = fmt::format(": {}, {} {}", report.type, list.entries,
                                 list.entries == 1 ? "entry" : "entries");
  if (report.filtered) text += " selected";
  if (report.is_stream) {
    text += fmt::format(" in {} record{}", report.records, report.records == 1 ? "" : "s");
  }
  return Cut(report.name, kWidth - Width(text)) + text;
}

}  // namespace

void PrintSummary(const SummaryReport& report, const Palette& paint, bool utf8, Output& out) {
  const ListSummary& list = report.list;
  out.Print("{}\n", paint(Colour::kBold, Title(report)));
  Screen screen(paint, out);
  if (list.entries > 0) {
    screen.Line("category", "", CountsOf(pb::InterfaceCategory_descriptor(), list.categories));
    screen.Line("type", "", CountsOf(pb::InterfaceType_descriptor(), list.types));
    screen.Line("admin", "", UpAndDown(list.admin));
    screen.Line("oper", "", UpAndDown(list.operational));
    screen.Line("link", "", UpAndDown(list.link));
    const Examples& down = list.down_though_enabled;
    if (down.count == 0) {
      screen.Line("down", "none although enabled");
    } else {
      std::vector<Cell> names;
      for (const std::string& name : down.names) names.emplace_back(Name(name), Colour::kRed);
      screen.Line("down", fmt::format("{} although enabled: ", down.count), names,
                  down.count - down.names.size());
    }
    PrintHeld(screen, "shut", list.shut, list.shut_by);
    PrintHeld(screen, "blocked", list.blocked, list.blocked_by);
    PrintOdd(screen, list.odd);
    const std::vector<Cell> losses = Losses(list);
    screen.Line("lost", losses.empty() ? "nothing" : "values: ", losses);
  }
  if (list.rejected.count == 0) {
    if (list.entries > 0) screen.Line("rejected", "none");
  } else {
    screen.Line("rejected",
                fmt::format("{}: {}: {}", list.rejected.count, Name(list.rejected.names.front()),
                            ProblemText(*list.first_rejection)));
  }
  if (report.first_unreadable) {
    screen.Line("malformed",
                fmt::format("{}: {}", report.unreadable, ProblemText(*report.first_unreadable)));
  }
  if (list.panel.ports().empty()) return;
  out.Write('\n');
  PrintPanel(list.panel, paint, utf8, out);
}

}  // namespace zorl2_inspect
