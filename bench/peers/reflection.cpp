// Mapping by reflection: one loop sets the fields of any message through its descriptor, another
// one reads them. The native side is known at compile time, which is faster than a table of
// offsets. One message is reused.
#include <google/protobuf/message.h>

#include "bench/peers/delimited.h"
#include "bench/peers/fields.h"
#include "interface_entry.pb.h"

namespace zorl2_peers {

namespace {

using google::protobuf::FieldDescriptor;
using google::protobuf::Message;

// Walks the fields of a message in the order of the schema. The elements of a list and the octets
// of an identifier share a field.
struct Fields {
  const google::protobuf::Descriptor& descriptor;
  const google::protobuf::Reflection& reflection;
  int index = -1;
  int element = 0;

  explicit Fields(const Message& message)
      : descriptor(*message.GetDescriptor()), reflection(*message.GetReflection()) {}

  template <typename Value>
  const FieldDescriptor* Next() {
    ++element;
    const bool shares = kIsElement<Value> || std::is_same_v<Value, std::uint8_t>;
    if (index < 0 || !shares || !descriptor.field(index)->is_repeated()) {
      ++index;
      element = std::is_same_v<Value, Count> ? -1 : 0;
    }
    return descriptor.field(index);
  }
};

struct Setter : Fields {
  Message* message;

  explicit Setter(Message* into) : Fields(*into), message(into) {}

  template <typename Value>
  void operator()(const Value& value) {
    const FieldDescriptor* field = Next<Value>();
    const bool repeated = field->is_repeated();
    if constexpr (std::is_same_v<Value, Count>) {
      return;
    } else if constexpr (kIsPart<Value>) {
      VisitMembers(value, Setter(repeated ? reflection.AddMessage(message, field)
                                          : reflection.MutableMessage(message, field)));
    } else if constexpr (std::is_same_v<Value, std::string>) {
      reflection.SetString(message, field, value);
    } else if constexpr (std::is_same_v<Value, bool>) {
      reflection.SetBool(message, field, value);
    } else if constexpr (std::is_enum_v<Value>) {
      repeated ? reflection.AddEnumValue(message, field, WireNumber(value))
               : reflection.SetEnumValue(message, field, WireNumber(value));
    } else {
      const auto number = static_cast<std::uint32_t>(value);
      repeated ? reflection.AddUInt32(message, field, number)
               : reflection.SetUInt32(message, field, number);
    }
  }
};

struct Getter : Fields {
  const Message& message;

  explicit Getter(const Message& from) : Fields(from), message(from) {}

  template <typename Value>
  void operator()(Value& value) {
    const FieldDescriptor* field = Next<Value>();
    const bool repeated = field->is_repeated();
    const int size = repeated ? reflection.FieldSize(message, field) : 1;
    if (element >= size) throw std::runtime_error("missing element");
    if constexpr (std::is_same_v<Value, Count>) {
      value.value = static_cast<std::uint32_t>(size);
    } else if constexpr (kIsPart<Value>) {
      VisitMembers(value, Getter(repeated ? reflection.GetRepeatedMessage(message, field, element)
                                          : reflection.GetMessage(message, field)));
    } else if constexpr (std::is_same_v<Value, std::string>) {
      std::string scratch;
      value = reflection.GetStringReference(message, field, &scratch);
    } else if constexpr (std::is_same_v<Value, bool>) {
      value = reflection.GetBool(message, field);
    } else if constexpr (std::is_enum_v<Value>) {
      value = FromWire<Value>(repeated ? reflection.GetRepeatedEnumValue(message, field, element)
                                       : reflection.GetEnumValue(message, field));
    } else {
      value = static_cast<Value>(repeated ? reflection.GetRepeatedUInt32(message, field, element)
                                          : reflection.GetUInt32(message, field));
    }
  }
};

class ByReflection final : public Peer {
 public:
  std::string_view Encode(const Records& records) override {
    bytes_.clear();
    for (const IntfEntry& record : records) {
      message_.Clear();
      WriteEntry(record, Setter(&message_));
      Append(message_, bytes_);
    }
    return bytes_;
  }

  void Decode(std::string_view bytes, Records& records) override {
    ReadStream(bytes, records, [this](std::string_view& rest, IntfEntry& record) {
      Take(rest, message_);
      ReadEntry(record, Getter(message_));
    });
  }

 private:
  zorl2::protobuf::IntfEntry message_;
  std::string bytes_;
};

}  // namespace

std::unique_ptr<Peer> MakeReflection() { return std::make_unique<ByReflection>(); }

}  // namespace zorl2_peers
