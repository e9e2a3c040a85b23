// What changed between two captures.
#pragma once

#include <google/protobuf/descriptor.h>
#include <google/protobuf/message.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tools/model/field_changes.h"
#include "tools/model/filter.h"

namespace zorl2_inspect {

// The change of one element: an entry, a state, a hold time, or a whole record without an
// identifier.
struct ElementChange {
  FieldChange::Kind kind;
  // The identifier; for a record without one, its type and place.
  std::string key;
  const google::protobuf::Message* before = nullptr;
  const google::protobuf::Message* after = nullptr;
  std::vector<FieldChange> fields;
};

struct DiffTotals {
  std::uint64_t added = 0;
  std::uint64_t removed = 0;
  std::uint64_t changed = 0;
  std::uint64_t same = 0;
  // Whether the messages around the elements differ, such as the clients of two lists.
  bool around = false;

  bool equal() const { return added + removed + changed == 0 && !around; }
};

// Compares two captures in the memory of one of them, which is held; the other is read element by
// element. Pairs elements by identifier, the second element with an identifier with the second one
// with it, and so on; pairs elements without an identifier by place. The order of elements with an
// identifier makes no difference. Leaves out what the filters select on neither side.
class Differ {
 public:
  enum class Side { kBefore, kAfter };
  // Its messages are valid during the call only.
  using Report = std::function<void(const ElementChange&)>;

  // The filters must remain valid.
  Differ(const google::protobuf::Descriptor& element, Side held, const Filter& before,
         const Filter& after, Report report);

  // Adds an element of the side that is held; `bytes` is its wire format.
  void Hold(const google::protobuf::Message& element, std::string_view bytes);

  // Compares an element of the other side with that of the held ones which has its identifier.
  // After the last call of Hold().
  void Compare(const google::protobuf::Message& element, std::string_view bytes);

  // Reports the held elements that were not compared, in the order of their identifiers.
  void Finish();

  // Compares the fields of two messages that contain the elements.
  void CompareAround(const google::protobuf::Message& before,
                     const google::protobuf::Message& after);

  const DiffTotals& totals() const { return totals_; }

 private:
  using Identifier = std::vector<std::uint32_t>;
  struct Group {
    std::vector<std::string> held;
    std::size_t compared = 0;
  };

  Identifier IdentifierIn(const google::protobuf::Message& element) const;
  std::string KeyText(const google::protobuf::Message& element, std::size_t occurrence) const;
  void ReportLone(const google::protobuf::Message& element, Side side, std::size_t occurrence);
  void ReportPair(const google::protobuf::Message& before, const google::protobuf::Message& after,
                  std::size_t occurrence);

  const google::protobuf::Descriptor& type_;
  const google::protobuf::FieldDescriptor* identifier_;
  Side held_side_;
  const Filter& before_;
  const Filter& after_;
  Report report_;
  // One of them without identifiers.
  std::map<Identifier, Group> groups_;
  // The held element that is compared.
  std::unique_ptr<google::protobuf::Message> held_;
  DiffTotals totals_;
};

}  // namespace zorl2_inspect
