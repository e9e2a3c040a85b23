// A picture of the ports.
#pragma once

#include <cstddef>

#include "tools/model/front_panel.h"
#include "tools/text/colours.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

// Prints two rows of 24 ports for each bank, at most three banks, and a legend: the first, third
// and every other port above, the rest below. Prints nothing if there is no port.
void PrintPanel(const FrontPanel& panel, const Palette& paint, bool utf8, Output& out);

}  // namespace zorl2_inspect
