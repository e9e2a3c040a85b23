// Bytes written by hand: parts of fixed size are copied as they are in memory, with their padding.
// Both sides must be built alike, and no field can be added. The reader checks only that it stays
// inside the bytes.
#include <cstring>
#include <stdexcept>

#include "bench/peers/fields.h"
#include "bench/peers/peer.h"

namespace zorl2_peers {

namespace {

// The largest size of a record in bytes.
std::size_t Bound(const IntfEntry& entry) {
  const IntfEntry::GeneralInfo& general = entry.getGeneralInfo();
  return sizeof(IntfEntry) + general.intf_name.size() + general.phy_addr.size() +
         general.redundancy_group_phy_addr.size() +
         entry.getShutdownProtos().size() * sizeof(ProtocolType) +
         entry.getBlockInfo().size() * sizeof(IntfEntry::BlockInfo);
}

// Writes to memory, which must be large enough.
struct Writer {
  char*& to;

  void Put(const void* data, std::size_t size) {
    std::memcpy(to, data, size);
    to += size;
  }

  template <typename Value>
  void operator()(const Value& value) {
    if constexpr (std::is_same_v<Value, std::string>) {
      (*this)(Count{static_cast<std::uint32_t>(value.size())});
      Put(value.data(), value.size());
    } else if constexpr (std::is_same_v<Value, IntfEntry::GeneralInfo>) {
      VisitScalars(value, *this);
    } else {
      static_assert(std::is_trivially_copyable_v<Value>);
      Put(&value, sizeof(value));
    }
  }
};

struct Reader {
  std::string_view& rest;

  const char* Take(std::size_t size) {
    if (size > rest.size()) throw std::runtime_error("cut off");
    const char* start = rest.data();
    rest.remove_prefix(size);
    return start;
  }

  template <typename Value>
  void operator()(Value& value) {
    if constexpr (std::is_same_v<Value, std::string>) {
      Count size{};
      (*this)(size);
      value.assign(Take(size.value), size.value);
    } else if constexpr (std::is_same_v<Value, IntfEntry::GeneralInfo>) {
      VisitScalars(value, *this);
    } else {
      static_assert(std::is_trivially_copyable_v<Value>);
      std::memcpy(&value, Take(sizeof(value)), sizeof(value));
    }
  }
};

class ByHand final : public Peer {
 public:
  std::string_view Encode(const Records& records) override {
    std::size_t bound = sizeof(Count);
    for (const IntfEntry& record : records) bound += Bound(record);
    if (bytes_.size() < bound) bytes_.resize(bound);
    char* to = bytes_.data();
    Writer{to}(Count{static_cast<std::uint32_t>(records.size())});
    for (const IntfEntry& record : records) WriteEntry(record, Writer{to});
    return {bytes_.data(), static_cast<std::size_t>(to - bytes_.data())};
  }

  void Decode(std::string_view bytes, Records& records) override {
    Count count{};
    Reader{bytes}(count);
    records.resize(count.value);
    for (IntfEntry& record : records) ReadEntry(record, Reader{bytes});
  }

 private:
  std::string bytes_;
};

}  // namespace

std::unique_ptr<Peer> MakeByHand() { return std::make_unique<ByHand>(); }

}  // namespace zorl2_peers
