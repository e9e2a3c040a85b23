// Runs a converter on hostile bytes: parses, converts to native, compares with the oracle, converts
// back, compares again, and checks that a second trip changes nothing.
#pragma once

#include <google/protobuf/stubs/logging.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "native/pvex_fault.h"
#include "tests/differential/compare.h"
#include "tests/differential/generate.h"

namespace proof {

// Stops with the difference on standard error; the fuzzer then keeps the input.
inline void Require(const std::string& difference) {
  if (difference.empty()) return;
  std::fprintf(stderr, "%s\n", difference.c_str());
  std::abort();
}

inline void Silence() {
  static const auto previous = google::protobuf::SetLogHandler(nullptr);
  static_cast<void>(previous);
}

// Thrown by the harness's host functions, so that a fault leaves the conversion before it calls
// exit and does not terminate the fuzzer.
struct Fault {
  int severity;
  std::string function, file;
  int line;
  std::string message;
};

inline std::string Describe(const Fault& fault) {
  return std::to_string(fault.severity) + " " + fault.function + " " + fault.file + ":" +
         std::to_string(fault.line) + " [" + fault.message + "]";
}

template <typename Converter, typename Message, typename Record>
int FuzzConverter(const std::uint8_t* data, std::size_t size, Record (Generator::*record)(),
                  int faultLine = 0) {
  Silence();
  Message message;
  if (!message.ParsePartialFromArray(data, static_cast<int>(size))) return 0;
  const auto model = Read(message);
  // A used destination. The same input always gives the same one.
  std::uint64_t seed = size;
  for (std::size_t i = 0; i < size; ++i) seed = seed * 1099511628211U + data[i];
  Generator generator(seed);
  const Record before = (generator.*record)();

  oracle::Outcome outcome;
  Require(DifferenceToNative<Converter>(model, message, before, &outcome));
  if (outcome == oracle::Outcome::kFatal) {
    std::string fault = "no fault";
    try {
      auto native = Native(before);
      Converter().Convert(message, native);
    } catch (const Fault& thrown) {
      fault = Describe(thrown);
    }
    const Fault expected{1, "Convert", "convert/intf_state_converter.cpp", faultLine, ""};
    if (fault != Describe(expected)) Require(fault + " instead of " + Describe(expected));
  }
  if (outcome != oracle::Outcome::kTrue) return 0;

  // Converts back into a message that still holds the input.
  Record arrived = before;
  oracle::ToNative(model, arrived);
  Message once = message;
  Require(DifferenceToMessage<Converter>(arrived, model, once));
  // Repeats the trip with the bytes that the library wrote. They must not change, unless the record
  // cannot be sent at all.
  if (!once.IsInitialized()) return 0;
  Message parsed;
  if (!parsed.ParseFromString(once.SerializeAsString())) Require("its own bytes do not parse");
  Record second = {};
  oracle::ToNative(Read(parsed), second);
  Require(DifferenceToNative<Converter>(Read(parsed), parsed, Record{}));
  Message twice;
  Require(DifferenceToMessage<Converter>(second, Read(twice), twice));
  if (twice.SerializeAsString() != once.SerializeAsString()) {
    Require("second trip: " + Hex(twice.SerializeAsString()) +
            "\ninstead of: " + Hex(once.SerializeAsString()));
  }
  return 0;
}

}  // namespace proof
