// What changed between two captures.
#pragma once

#include <google/protobuf/message.h>

#include <cstddef>
#include <string>
#include <vector>

#include "tools/model/field_changes.h"
#include "tools/model/filter.h"

namespace zorl2_inspect {

// One capture: its records in their order, all of one type. The caller owns them.
struct DiffSide {
  std::string name;
  std::vector<const google::protobuf::Message*> records;
  // Null if everything is selected.
  const Filter* filter = nullptr;
};

// The change of one element: an entry, a state, a hold time, or a whole record without an
// identifier.
struct ElementChange {
  FieldChange::Kind kind;
  // The identifier; for a record without one, its type and place.
  std::string key;
  const google::protobuf::Message* before = nullptr;
  const google::protobuf::Message* after = nullptr;
  std::vector<FieldChange> fields;
  // False for the message around the elements, such as the client of a list.
  bool is_element = true;
};

struct DiffResult {
  std::vector<ElementChange> changes;
  std::size_t elements_before = 0;
  std::size_t elements_after = 0;
  std::size_t same = 0;
  bool equal() const { return changes.empty(); }
};

// Pairs the elements of lists and the entries of streams by identifier; if an identifier occurs
// several times, pairs its first occurrences, its second ones, and so on. Pairs everything else by
// place. The order of paired elements makes no difference. Omits what neither filter selects.
// Throws Error if the two have elements of different types.
DiffResult Compare(const DiffSide& before, const DiffSide& after);

}  // namespace zorl2_inspect
