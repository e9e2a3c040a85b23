// Runs one conversion of the library and the same one of the oracle, and reports how they differ.
#pragma once

#include <boost/exception/exception.hpp>
#include <boost/throw_exception.hpp>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "native/intf_entry_builder.h"
#include "tests/differential/wire.h"
#include "tests/support/native_text.h"
#include "tests/support/wire.h"

namespace proof {

inline const char* Name(oracle::Outcome outcome) {
  switch (outcome) {
    case oracle::Outcome::kTrue:
      return "true";
    case oracle::Outcome::kFalse:
      return "false";
    case oracle::Outcome::kMapAt:
      return "std::out_of_range: map::at";
    case oracle::Outcome::kInvalidKey:
      return "boost::wrapexcept<std::out_of_range>: bimap<>: invalid key";
    case oracle::Outcome::kFatal:
      return "fatal";
  }
  return "?";
}

// How a call ended, in the words of Name(). Exceptions differ by their exact type and text.
template <typename Call>
std::string Ending(Call call) {
  try {
    return call() ? "true" : "false";
  } catch (const boost::wrapexcept<std::out_of_range>& e) {
    return std::string("boost::wrapexcept<std::out_of_range>: ") + e.what();
  } catch (const std::out_of_range& e) {
    if (typeid(e) != typeid(std::out_of_range)) return typeid(e).name();
    return std::string("std::out_of_range: ") + e.what();
  } catch (const std::exception& e) {
    return std::string(typeid(e).name()) + ": " + e.what();
  }
}

inline std::string Hex(const std::string& bytes) { return zorl2_test::ToHex(bytes); }

using zorl2_test::Text;

// Builds a record from these members.
inline IntfEntry Build(const oracle::EntryRecord& r) {
  IntfEntryBuilder builder;
  builder.addZorId(r.id).addParent(r.parent).addGeneralInfo(r.generalInfo);
  builder.addStatusInfo(r.statusInfo).addPhysicalInfo(r.physicalInfo).addTypeInfo(r.typeInfo);
  for (const ProtocolType protocol : r.shutdownProtos) builder.addShutdownProto(protocol);
  for (const IntfEntry::BlockInfo& block : r.blockInfo) builder.addBlockInfo(block);
  return builder.setInterfaceCategory(r.interfaceCategory).Build();
}

inline std::string Text(const oracle::EntryRecord& record) { return Text(Build(record)); }

// The library's form of the oracle's record.
template <typename Record>
const Record& Native(const Record& record) {
  return record;
}
inline IntfEntry Native(const oracle::EntryRecord& record) { return Build(record); }

// Converts the message into copies of the record. Empty if both agree on the ending and on every
// member, and the message is unchanged. A message whose conversion is fatal is not converted.
template <typename Converter, typename Model, typename Message, typename Record>
std::string DifferenceToNative(const Model& model, const Message& message, const Record& before,
                               oracle::Outcome* outcome = nullptr) {
  Record expected = before;
  const oracle::Outcome expectedEnding = oracle::ToNative(model, expected);
  if (outcome != nullptr) *outcome = expectedEnding;
  if (expectedEnding == oracle::Outcome::kFatal) return {};
  auto actual = Native(before);
  Converter converter;
  const std::string ending = Ending([&] { return converter.Convert(message, actual); });
  std::string difference;
  if (ending != Name(expectedEnding)) {
    difference += "ending: " + ending + " instead of " + Name(expectedEnding) + "\n";
  }
  if (Text(actual) != Text(expected)) {
    difference += zorl2_test::TextDifference(Text(expected), Text(actual));
  }
  if (Encode(Read(message)) != Encode(model)) difference += "the source has changed\n";
  if (!difference.empty()) {
    difference += "before: " + Text(before) + "\nsource: " + Hex(Encode(model)) + "\n";
  }
  return difference;
}

// Converts the record into the message, which holds what the model holds, possibly with unknown
// fields. Empty if both agree on the ending and on every byte, and the record is unchanged.
template <typename Converter, typename Model, typename Message, typename Record>
std::string DifferenceToMessage(const Record& record, const Model& before, Message& message) {
  Model expected = before;
  const oracle::Outcome expectedEnding = oracle::ToMessage(record, expected);
  const auto native = Native(record);
  Converter converter;
  const std::string ending = Ending([&] { return converter.Convert(native, message); });
  std::string difference;
  if (ending != Name(expectedEnding)) {
    difference += "ending: " + ending + " instead of " + Name(expectedEnding) + "\n";
  }
  const std::string bytes = message.SerializePartialAsString();
  if (bytes != Encode(expected)) {
    difference += " bytes: " + Hex(bytes) + "\n    of: " + Hex(Encode(expected)) + "\n";
  }
  if (Text(native) != Text(record)) difference += "the source has changed\n";
  if (!difference.empty()) difference += "source: " + Text(record) + "\n";
  return difference;
}

}  // namespace proof
