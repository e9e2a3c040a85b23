// Random messages and records, damaged on purpose at known rates.
#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "tests/differential/oracle.h"

namespace proof {

// A reproducible stream of inputs. Each input first draws two rates, one for missing fields and one
// for unlisted values: none for four inputs of seven, 1 %, 5 % and 30 % for one of seven each. Of
// the inputs with missing fields every tenth identifier also has a random count of values.
// differential_test prints how often each kind of damage occurred.
class Generator {
 public:
  explicit Generator(std::uint64_t seed) : random_(seed) { DrawDamage(); }

  void DrawDamage();
  bool Chance(unsigned percent) { return random_() % 100 < percent; }
  std::uint64_t Below(std::uint64_t bound) { return random_() % bound; }
  std::string Text();

  oracle::Zorid Zorid();
  oracle::General General();
  oracle::Status Status();
  oracle::Physical Physical();
  oracle::Flags Flags();
  oracle::Type Type();
  oracle::Block Block();
  oracle::Entry Entry();
  // The states of a shutdown signal are 0 or 1, those of a blocking signal any number.
  oracle::Signal ShutSignal();
  oracle::Signal BlockSignal();
  oracle::Client Client();
  oracle::Lag Lag();

  zorid_t NativeZorid();
  IntfEntry::GeneralInfo NativeGeneral();
  IntfEntry::StatusInfo NativeStatus();
  IntfEntry::PhysicalInfo NativePhysical();
  IntfEntry::InterfaceFlags NativeFlags();
  IntfEntry::TypeInfo NativeType();
  IntfEntry::BlockInfo NativeBlock();
  oracle::EntryRecord NativeEntry();
  ShutStateInfoSyncSignal NativeShut();
  BlockStateInfoSyncSignal NativeBlockSignal();
  ZORL2InfoClientConfig NativeClient();
  LagMemberOperation NativeLag();

 private:
  bool Missing() { return missing_ != 0 && Below(1000) < missing_; }
  bool Flag() { return Below(2) == 1; }
  std::uint32_t Number32() { return static_cast<std::uint32_t>(Number64()); }
  std::uint64_t Number64();
  // Returns a number from 0 to last or, at the current rate, any number.
  std::int32_t Enumeration(std::int32_t last);
  std::size_t Length();
  oracle::Signal Signal(bool shut);

  std::mt19937_64 random_;
  std::uint64_t missing_ = 0;   // missing fields, in thousandths
  std::uint64_t unlisted_ = 0;  // unlisted values, in thousandths
};

}  // namespace proof
