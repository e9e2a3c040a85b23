// protozero: the wire format of the schema, each field written and read without a message.
// Two buffers are reused. The reader skips unknown fields and checks neither that the required
// fields are present nor that an enumeration value is listed.
#include <protozero/pbf_reader.hpp>
#include <protozero/pbf_writer.hpp>

#include "bench/peers/delimited.h"
#include "bench/peers/fields.h"

namespace zorl2_peers {

namespace {

using protozero::pbf_reader;
using protozero::pbf_writer;

void Write(pbf_writer writer, const zorid_t& id) {
  writer.add_packed_uint32(1, std::begin(id.octets), std::end(id.octets));
}

// A part, whose members have the tags 1, 2, 3, ...
template <typename Part>
void Write(pbf_writer writer, const Part& part);

template <typename Value>
void WriteValue(pbf_writer& writer, protozero::pbf_tag_type tag, const Value& value) {
  if constexpr (kIsPart<Value>) {
    Write(pbf_writer(writer, tag), value);
  } else if constexpr (std::is_same_v<Value, std::string>) {
    writer.add_string(tag, value);
  } else if constexpr (std::is_enum_v<Value>) {
    writer.add_enum(tag, WireNumber(value));
  } else {
    writer.add_uint32(tag, static_cast<std::uint32_t>(value));
  }
}

template <typename Part>
void Write(pbf_writer writer, const Part& part) {
  protozero::pbf_tag_type tag = 0;
  VisitMembers(part, [&](const auto& member) { WriteValue(writer, ++tag, member); });
}

void Write(pbf_writer writer, const IntfEntry& entry) {
  // The elements of a list share a tag.
  WriteEntry(entry, [&writer, tag = protozero::pbf_tag_type{1}](const auto& value) mutable {
    using Value = std::decay_t<decltype(value)>;
    if constexpr (std::is_same_v<Value, Count>) {
      ++tag;
    } else {
      WriteValue(writer, kIsElement<Value> ? tag - 1 : tag++, value);
    }
  });
}

template <typename Value>
void ReadValue(pbf_reader& reader, Value& value);

// Reads a part, whose members have the tags 1, 2, 3, ... The compiler turns this into a switch.
template <typename Part>
void Read(pbf_reader reader, Part& part) {
  while (reader.next()) {
    protozero::pbf_tag_type tag = 0;
    const auto read = [&](auto& member) {
      if (reader.tag() != ++tag) return false;
      ReadValue(reader, member);
      return true;
    };
    if (!std::apply([&](auto&... member) { return (read(member) || ...); }, Members(part))) {
      reader.skip();
    }
  }
}

void Read(pbf_reader reader, zorid_t& id) {
  if (!reader.next(1)) return;
  const auto values = reader.get_packed_uint32();
  if (values.size() != std::size(id.octets)) return;
  std::transform(values.begin(), values.end(), id.octets,
                 [](std::uint32_t value) { return static_cast<std::uint8_t>(value); });
}

template <typename Value>
void ReadValue(pbf_reader& reader, Value& value) {
  if constexpr (kIsPart<Value>) {
    Read(reader.get_message(), value);
  } else if constexpr (std::is_same_v<Value, std::string>) {
    const protozero::data_view text = reader.get_view();
    value.assign(text.data(), text.size());
  } else if constexpr (std::is_enum_v<Value>) {
    value = FromWire<Value>(reader.get_enum());
  } else {
    value = static_cast<Value>(reader.get_uint32());
  }
}

void Read(pbf_reader reader, IntfEntry& entry) {
  const auto next = [&reader](auto value) {
    ReadValue(reader, value);
    return value;
  };
  IntfEntryBuilder builder;
  IntfEntry::GeneralInfo& general = EmptyGeneralInfo();
  while (reader.next()) {
    // clang-format off
    switch (reader.tag()) {
      case 1: builder.addZorId(next(zorid_t())); break;
      case 2: builder.addParent(next(zorid_t())); break;
      case 3: ReadValue(reader, general); break;
      case 4: builder.addStatusInfo(next(IntfEntry::StatusInfo())); break;
      case 5: builder.addPhysicalInfo(next(IntfEntry::PhysicalInfo())); break;
      case 6: builder.addTypeInfo(next(IntfEntry::TypeInfo())); break;
      case 7: builder.addShutdownProto(next(ProtocolType())); break;
      case 8: builder.addBlockInfo(next(IntfEntry::BlockInfo())); break;
      case 9: builder.setInterfaceCategory(next(InterfaceCategory())); break;
      default: reader.skip();
    }
    // clang-format on
  }
  entry = builder.addGeneralInfo(general).Build();
}

class Protozero final : public Peer {
 public:
  std::string_view Encode(const Records& records) override {
    bytes_.clear();
    for (const IntfEntry& record : records) {
      entry_.clear();
      Write(pbf_writer(entry_), record);
      protozero::write_varint(std::back_inserter(bytes_), entry_.size());
      bytes_ += entry_;
    }
    return bytes_;
  }

  void Decode(std::string_view bytes, Records& records) override {
    ReadStream(bytes, records, [](std::string_view& rest, IntfEntry& record) {
      const char* position = rest.data();
      const char* const end = rest.data() + rest.size();
      const auto size = protozero::decode_varint(&position, end);
      if (size > static_cast<std::size_t>(end - position)) throw std::runtime_error("cut off");
      Read(pbf_reader(position, size), record);
      rest.remove_prefix(static_cast<std::size_t>(position - rest.data()) + size);
    });
  }

 private:
  std::string entry_;
  std::string bytes_;
};

}  // namespace

std::unique_ptr<Peer> MakeProtozero() { return std::make_unique<Protozero>(); }

}  // namespace zorl2_peers
