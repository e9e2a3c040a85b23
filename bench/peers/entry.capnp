# The record for Cap'n Proto. Enumerations are native numbers: any of 32 bits is a defined value.
@0xeb252c5d58efe0dd;

using Cxx = import "/capnp/c++.capnp";
$Cxx.namespace("zorl2_peers::cp");

struct Block {
  protocol @0 :Int32;
  state @1 :Int32;
}

struct Entry {
  id @0 :UInt32;
  parent @1 :UInt32;
  intfName @2 :Text;
  phyAddr @3 :Text;
  bridgePortNumber @4 :UInt16;
  redundancyGroupId @5 :UInt32;
  redundancyGroupPhyAddr @6 :Text;
  adminStatus @7 :Int32;
  operationalStatus @8 :Int32;
  linkStatus @9 :Int32;
  operationalSpeed @10 :UInt32;
  extraShutdown @11 :Bool;
  extraBlocking @12 :Bool;
  configShutdown @13 :Bool;
  intfMtu @14 :UInt64;
  ethSpeed @15 :Int32;
  ethDuplexMode @16 :Int32;
  interfaceType @17 :Int32;
  ifL2Switching @18 :Bool;
  ifInBundle @19 :Bool;
  l2Bundle @20 :Bool;
  l2SubIf @21 :Bool;
  pointToPoint @22 :Bool;
  ifMulticast @23 :Bool;
  vlanType @24 :Int32;
  shutdownProtos @25 :List(Int32);
  blockInfo @26 :List(Block);
  category @27 :Int32;
}

struct EntryList {
  entries @0 :List(Entry);
}
