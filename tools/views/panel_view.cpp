#include "tools/views/panel_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "tools/text/quoting.h"
#include "tools/text/table.h"

namespace zorl2_inspect {
namespace {

constexpr std::size_t kMostBanks = 3;
constexpr std::size_t kMostPrefix = 16;
// A gap after so many ports of a row.
constexpr std::size_t kPortsOfBlock = 6;

struct Look {
  const char* utf8;
  const char* ascii;
  Colour colour;
};

// Indexed by PortState.
constexpr Look kLooks[] = {
    {" ", " ", Colour::kPlain}, {"■", "#", Colour::kGreen}, {"□", "-", Colour::kRed},
    {"·", ".", Colour::kFaint}, {"✕", "x", Colour::kRed},   {"▨", "b", Colour::kYellow},
};

std::string Symbol(PortState state, const Palette& paint, bool utf8) {
  const Look& look = kLooks[static_cast<std::size_t>(state)];
  return paint(look.colour, utf8 ? look.utf8 : look.ascii);
}

// Every other port of a bank.
struct PanelRow {
  std::string label;  // "ge-0/0/1-47"
  std::vector<PortState> ports;
};

PanelRow RowFrom(const FrontPanel::Bank& bank, std::size_t start) {
  PanelRow row;
  std::size_t last = start;
  for (std::size_t place = start; place < bank.ports.size(); place += 2) {
    row.ports.push_back(bank.ports[place]);
    if (bank.ports[place] != PortState::kNone) last = place;
  }
  row.ports.resize((last - start) / 2 + 1);
  row.label = Cut(QuotedUnlessPlain(bank.prefix), kMostPrefix);
  row.label += fmt::format("{}", bank.first + start);
  if (last > start) row.label += fmt::format("-{}", bank.first + last);
  return row;
}

}  // namespace

void PrintPanel(const FrontPanel& panel, const Palette& paint, bool utf8, Output& out) {
  const std::vector<FrontPanel::Bank> banks = panel.Banks(kMostBanks);
  if (banks.empty()) return;
  std::vector<PanelRow> rows;
  std::size_t drawn = 0;
  for (const FrontPanel::Bank& bank : banks) {
    drawn += bank.used;
    for (const std::size_t start : {std::size_t{0}, std::size_t{1}}) {
      PanelRow row = RowFrom(bank, start);
      if (std::any_of(row.ports.begin(), row.ports.end(),
                      [](PortState state) { return state != PortState::kNone; })) {
        rows.push_back(std::move(row));
      }
    }
  }
  // Names with little in common give no picture.
  if (2 * drawn < panel.ports().size()) {
    rows.clear();
    drawn = 0;
  }
  std::size_t width = 0;
  for (const PanelRow& row : rows) width = std::max(width, Width(row.label));
  for (const PanelRow& row : rows) {
    std::string line = row.label + std::string(width - Width(row.label), ' ') + "  ";
    for (std::size_t i = 0; i < row.ports.size(); ++i) {
      if (i > 0) line += i % kPortsOfBlock == 0 ? "  " : " ";
      line += Symbol(row.ports[i], paint, utf8);
    }
    out.Print("{}\n", line);
  }
  std::array<std::size_t, static_cast<std::size_t>(PortState::kCount)> counts = {};
  for (const auto& port : panel.ports()) ++counts[static_cast<std::size_t>(port.second)];
  std::string legend;
  for (std::size_t i = 1; i < counts.size(); ++i) {
    if (counts[i] == 0) continue;
    const auto state = static_cast<PortState>(i);
    legend += fmt::format("{}{} {} {}", legend.empty() ? "" : "  ", Symbol(state, paint, utf8),
                          PortStateName(state), counts[i]);
  }
  const std::size_t not_drawn = panel.ports().size() - drawn + panel.without_place();
  if (not_drawn > 0) legend += fmt::format("  not drawn {}", not_drawn);
  out.Print("{}\n", legend);
}

}  // namespace zorl2_inspect
