// The costs that a hostile peer can cause: memory as a multiple of the bytes received, and the
// growth of memory and time with these bytes. SECURITY.md has the printed table.
#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <functional>
#include <string>

#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "tests/differential/wire.h"
#include "tests/support/allocations.h"

namespace pb = zorl2::protobuf;

namespace {

constexpr std::size_t kReceived = 1 << 20;

std::string Repeated(const std::string& front, const std::string& element, std::size_t size) {
  std::string bytes = front;
  while (bytes.size() < size) bytes += element;
  return bytes;
}

// Every element names another interface.
std::string States(std::size_t size) {
  std::string bytes = "\x08\x04";
  for (std::uint32_t i = 0; bytes.size() < size; ++i) {
    std::string values = "\x0a\x04";
    for (int shift = 21; shift >= 0; shift -= 7) values += static_cast<char>(i >> shift & 127);
    bytes += "\x12\x0a\x0a\x06" + values + "\x10\x01";
  }
  return bytes;
}

std::string Entry() {
  oracle::Entry entry;
  oracle::ToMessage(oracle::EntryRecord{}, entry);
  return proof::Encode(entry);
}

template <typename Converter, typename Message, typename Native>
void ParseAndConvert(const std::string& bytes) {
  Message message;
  ASSERT_TRUE(message.ParsePartialFromString(bytes));
  Native native;
  Converter().Convert(message, native);
}

struct Cost {
  double memory;       // bytes of heap per byte received, at the peak
  double nanoseconds;  // processor time per byte received
};

template <typename Receive>
Cost Measure(const std::string& bytes, Receive receive) {
  auto& [made, live, heap, peak] = zorl2_test::allocations;
  const std::size_t before = heap;
  peak = before;
  const std::clock_t start = std::clock();
  receive(bytes);
  const auto ticks = static_cast<double>(std::clock() - start);
  EXPECT_EQ(heap, before) << "leak";
  const auto size = static_cast<double>(bytes.size());
  return {static_cast<double>(peak - before) / size, ticks * (1e9 / CLOCKS_PER_SEC) / size};
}

void Check(const char* name, const std::function<std::string(std::size_t)>& make,
           const std::function<void(const std::string&)>& receive) {
  receive(make(1000));
  const Cost once = Measure(make(kReceived), receive);
  const Cost eightfold = Measure(make(8 * kReceived), receive);
  std::printf("%-42s %5.1f bytes per byte, %5.1f ns per byte\n", name, eightfold.memory,
              eightfold.nanoseconds);
  // Linear in the bytes received, with room for the doubling of arrays.
  EXPECT_LT(eightfold.memory, 2.1 * once.memory) << name;
  EXPECT_LT(eightfold.memory, 64) << name;
}

const auto kEntry = ParseAndConvert<IntfEntryConverter, pb::IntfEntry, IntfEntry>;
const auto kShut = ParseAndConvert<ShutStateConverter, pb::ShutStateSync, ShutStateInfoSyncSignal>;

TEST(HostileCost, MemoryGrowsLinearlyWithTheBytesReceived) {
  Check(
      "entry, shutdown protocols of 2 bytes",
      [](std::size_t n) { return Repeated(Entry(), "\x38\x04", n); }, kEntry);
  Check(
      "entry, block entries of 6 bytes",
      [](std::size_t n) { return Repeated(Entry(), std::string("\x42\x04\x08\x05\x10\x01"), n); },
      kEntry);
  Check(
      "entry, empty block entries (rejected)",
      [](std::size_t n) { return Repeated(Entry(), std::string("\x42\0", 2), n); }, kEntry);
  Check(
      "entry, unknown fields of 3 bytes",
      [](std::size_t n) { return Repeated(Entry(), "\xc0\x3e\x05", n); }, kEntry);
  Check("shutdown signal, distinct interfaces", States, kShut);
  Check(
      "shutdown signal, empty elements (rejected)",
      [](std::size_t n) { return Repeated("\x08\x04", std::string("\x12\0", 2), n); }, kShut);
}

}  // namespace
