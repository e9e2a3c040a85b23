// MessagePack: a record is an array of its parts, a part an array of its members. The buffer and
// the first chunk of the zone that holds parsed objects are reused; strings are not copied into the
// zone.
#include <msgpack.hpp>

#include "bench/peers/fields.h"
#include "bench/peers/peer.h"

namespace zorl2_peers {

namespace {

constexpr std::uint32_t kParts = 9;

using Packer = msgpack::packer<msgpack::sbuffer>;

template <typename Value>
void Pack(Packer& packer, const Value& value) {
  if constexpr (std::is_same_v<Value, Count>) {
    packer.pack_array(value.value);  // The elements follow.
  } else if constexpr (kIsPart<Value>) {
    packer.pack_array(std::tuple_size_v<decltype(Members(value))>);
    VisitMembers(value, [&packer](const auto& member) { Pack(packer, member); });
  } else if constexpr (std::is_enum_v<Value>) {
    packer.pack_int32(value);
  } else {
    packer.pack(value);
  }
}

const msgpack::object_array& Array(const msgpack::object& object) {
  if (object.type != msgpack::type::ARRAY) throw msgpack::type_error();
  return object.via.array;
}

// An array of exactly `size` elements.
const msgpack::object* Elements(const msgpack::object& object, std::size_t size) {
  if (Array(object).size != size) throw msgpack::type_error();
  return object.via.array.ptr;
}

template <typename Value>
void Unpack(const msgpack::object& object, Value& value) {
  if constexpr (kIsPart<Value>) {
    const msgpack::object* next = Elements(object, std::tuple_size_v<decltype(Members(value))>);
    VisitMembers(value, [&next](auto& member) { Unpack(*next++, member); });
  } else if constexpr (std::is_enum_v<Value>) {
    value = static_cast<Value>(object.as<std::int32_t>());
  } else {
    object.convert(value);
  }
}

// Reads the parts of a record: elements of its array, and of the lists in it.
struct Reader {
  const msgpack::object* part;
  const msgpack::object* element = nullptr;

  template <typename Value>
  void operator()(Value& value) {
    if constexpr (std::is_same_v<Value, Count>) {
      const msgpack::object_array& list = Array(*part++);
      value.value = list.size;
      element = list.ptr;
    } else {
      Unpack(kIsElement<Value> ? *element++ : *part++, value);
    }
  }
};

class Msgpack final : public Peer {
 public:
  std::string_view Encode(const Records& records) override {
    buffer_.clear();
    Packer packer(buffer_);
    packer.pack_array(static_cast<std::uint32_t>(records.size()));
    for (const IntfEntry& record : records) {
      packer.pack_array(kParts);
      WriteEntry(record, [&packer](const auto& value) { Pack(packer, value); });
    }
    return {buffer_.data(), buffer_.size()};
  }

  void Decode(std::string_view bytes, Records& records) override {
    zone_.clear();
    const auto refer = [](msgpack::type::object_type, std::size_t, void*) { return true; };
    const msgpack::object list = msgpack::unpack(zone_, bytes.data(), bytes.size(), refer);
    records.resize(Array(list).size);
    for (std::size_t i = 0; i < records.size(); ++i) {
      ReadEntry(records[i], Reader{Elements(list.via.array.ptr[i], kParts)});
    }
  }

 private:
  msgpack::sbuffer buffer_;
  msgpack::zone zone_;
};

}  // namespace

std::unique_ptr<Peer> MakeMsgpack() { return std::make_unique<Msgpack>(); }

}  // namespace zorl2_peers
