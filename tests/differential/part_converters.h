// The two helper classes in the form of converters, so that one comparison serves all.
#pragma once

#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"

namespace proof {

struct GeneralConverter {
  bool Convert(const zorl2::protobuf::GeneralInfo& from, IntfEntry::GeneralInfo& to) {
    return IntfEntryConvertHelperProtobuf().ConvertGeneralInfo(from, to);
  }
  bool Convert(const IntfEntry::GeneralInfo& from, zorl2::protobuf::GeneralInfo& to) {
    IntfEntryConvertHelperZOR().ConvertGeneralInfo(from, to);
    return true;
  }
};

struct StatusConverter {
  bool Convert(const zorl2::protobuf::StatusInfo& from, IntfEntry::StatusInfo& to) {
    return IntfEntryConvertHelperProtobuf().ConvertStatusInfo(from, to);
  }
  bool Convert(const IntfEntry::StatusInfo& from, zorl2::protobuf::StatusInfo& to) {
    IntfEntryConvertHelperZOR().ConvertStatusInfo(from, to);
    return true;
  }
};

struct PhysicalConverter {
  bool Convert(const zorl2::protobuf::PhysicalInfo& from, IntfEntry::PhysicalInfo& to) {
    return IntfEntryConvertHelperProtobuf().ConvertPhysicalInfo(from, to);
  }
  bool Convert(const IntfEntry::PhysicalInfo& from, zorl2::protobuf::PhysicalInfo& to) {
    IntfEntryConvertHelperZOR().ConvertPhysicalInfo(from, to);
    return true;
  }
};

struct FlagsConverter {
  bool Convert(const zorl2::protobuf::InterfaceFlags& from, IntfEntry::InterfaceFlags& to) {
    return IntfEntryConvertHelperProtobuf().ConvertInterfaceFlags(from, to);
  }
  bool Convert(const IntfEntry::InterfaceFlags& from, zorl2::protobuf::InterfaceFlags& to) {
    IntfEntryConvertHelperZOR().ConvertInterfaceFlags(from, to);
    return true;
  }
};

struct TypeConverter {
  bool Convert(const zorl2::protobuf::TypeInfo& from, IntfEntry::TypeInfo& to) {
    return IntfEntryConvertHelperProtobuf().ConvertTypeInfo(from, to);
  }
  bool Convert(const IntfEntry::TypeInfo& from, zorl2::protobuf::TypeInfo& to) {
    IntfEntryConvertHelperZOR().ConvertTypeInfo(from, to);
    return true;
  }
};

struct BlockConverter {
  bool Convert(const zorl2::protobuf::BlockInfo& from, IntfEntry::BlockInfo& to) {
    return IntfEntryConvertHelperProtobuf().ConvertBlockInfo(from, to);
  }
  bool Convert(const IntfEntry::BlockInfo& from, zorl2::protobuf::BlockInfo& to) {
    IntfEntryConvertHelperZOR().ConvertBlockInfo(from, to);
    return true;
  }
};

}  // namespace proof
