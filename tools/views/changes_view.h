// The changes between two captures as a change log, or as one JSON object.
#pragma once

#include <optional>
#include <string>

#include "tools/model/changes.h"
#include "tools/text/colours.h"
#include "tools/text/json_writer.h"
#include "tools/text/output.h"

namespace zorl2_inspect {

class ChangesView {
 public:
  // `before` and `after` are the names of the captures. The output must remain valid.
  ChangesView(Output& out, std::string before, std::string after, bool json, Palette palette);

  void Add(const ElementChange& change);
  void Finish(const DiffTotals& totals);

 private:
  void Begin();
  void PrintChange(const ElementChange& change);

  Output& out_;
  std::string before_;
  std::string after_;
  Palette paint_;
  std::optional<JsonWriter> json_;
  bool begun_ = false;
};

}  // namespace zorl2_inspect
