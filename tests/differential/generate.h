// Random messages and records, damaged on purpose.
#pragma once

#include <cstdint>
#include <random>
#include <string>

#include "tests/support/oracle.h"

namespace proof {

// One reproducible stream of inputs. Every input draws first how badly it is damaged: half of them
// not at all, the others by missing fields, wrong counts and numbers outside the enumerations.
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
  // Mostly 0 to last; with the damage drawn, any number.
  std::int32_t Enumeration(std::int32_t last);
  std::size_t Length();
  oracle::Signal Signal(bool shut);

  std::mt19937_64 random_;
  std::uint64_t missing_ = 0;  // fields missing, in thousandths
  std::uint64_t foreign_ = 0;  // numbers outside an enumeration, in thousandths
};

}  // namespace proof
