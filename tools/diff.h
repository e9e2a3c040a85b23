// What changed between two captures, as a change log.
#pragma once

#include <google/protobuf/message.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

#include "tools/colours.h"
#include "tools/diff_fields.h"

namespace zorl2_inspect {

// One capture: its records in their order, all of one type. Owned by the caller.
struct DiffSide {
  std::string name;
  std::vector<const google::protobuf::Message*> records;
};

// What happened to one element: an entry, a state, a hold time, or a whole record that has no
// identifier.
struct ElementChange {
  FieldChange::Kind kind;
  // The identifier; for a record without one, its type and place.
  std::string key;
  const google::protobuf::Message* before = nullptr;
  const google::protobuf::Message* after = nullptr;
  std::vector<FieldChange> fields;
};

struct DiffResult {
  std::vector<ElementChange> changes;
  std::size_t elements_before = 0;
  std::size_t elements_after = 0;
  std::size_t same = 0;
  bool equal() const { return changes.empty(); }
};

// Pairs the elements of lists and the entries of streams by identifier, the second of one
// identifier with the second, and so on; everything else by place. The order of paired elements
// makes no difference. False, with the reason, when the two hold different things.
bool Compare(const DiffSide& before, const DiffSide& after, DiffResult* result,
             std::string* problem);

void PrintChanges(const DiffSide& before, const DiffSide& after, const DiffResult& result,
                  const Palette& paint, std::FILE* out);
void PrintChangesAsJson(const DiffSide& before, const DiffSide& after, const DiffResult& result,
                        std::FILE* out);

}  // namespace zorl2_inspect
