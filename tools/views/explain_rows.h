// The rows of an explained message, as text.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/model/notes.h"
#include "tools/text/output.h"
#include "tools/wire/wire_walker.h"

namespace zorl2_inspect {

struct ExplainOptions {
  bool colours = false;
  std::size_t bytes = 32;  // How many bytes of one field are printed.
  std::size_t width = 0;   // How many columns a line may have; 0 for any number.
};

// A field, an absent field or damage.
struct ExplainRow {
  std::size_t offset = 0;
  std::string_view bytes;
  std::string_view path;
  std::string type;                  // Empty for damage.
  std::string value;                 // For a person.
  const WireField* field = nullptr;  // Null for an absent field and for damage.
  std::vector<Note> notes;
};

class ExplainRows {
 public:
  virtual ~ExplainRows() = default;
  virtual void Print(const ExplainRow& row) = 0;
};

// One line for each row, with the whole path; or, if the width is less than such lines usually
// take, a tree of names that fits into the width.
std::unique_ptr<ExplainRows> TextRows(const ExplainOptions& options, Output& out);

}  // namespace zorl2_inspect
