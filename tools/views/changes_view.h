// The changes between two captures as a change log.
#pragma once

#include "tools/model/changes.h"
#include "tools/text/colours.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

void PrintChanges(const DiffSide& before, const DiffSide& after, const DiffResult& result,
                  const Palette& paint, Output& out);
void PrintChangesAsJson(const DiffSide& before, const DiffSide& after, const DiffResult& result,
                        Output& out);

}  // namespace zorl2_inspect
