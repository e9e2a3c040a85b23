// The functions of the two helper classes in the form of converters, so that one comparison serves
// all.
#pragma once

#include "convert/intf_entry_convert_helper_protobuf.h"
#include "convert/intf_entry_convert_helper_zor.h"

namespace proof {

template <typename Message, typename Record, auto kToNative, auto kToMessage>
struct PartConverter {
  bool Convert(const Message& from, Record& to) {
    return (IntfEntryConvertHelperProtobuf().*kToNative)(from, to);
  }
  bool Convert(const Record& from, Message& to) {
    (IntfEntryConvertHelperZOR().*kToMessage)(from, to);
    return true;
  }
};

using GeneralConverter = PartConverter<zorl2::protobuf::GeneralInfo, IntfEntry::GeneralInfo,
                                       &IntfEntryConvertHelperProtobuf::ConvertGeneralInfo,
                                       &IntfEntryConvertHelperZOR::ConvertGeneralInfo>;
using StatusConverter = PartConverter<zorl2::protobuf::StatusInfo, IntfEntry::StatusInfo,
                                      &IntfEntryConvertHelperProtobuf::ConvertStatusInfo,
                                      &IntfEntryConvertHelperZOR::ConvertStatusInfo>;
using PhysicalConverter = PartConverter<zorl2::protobuf::PhysicalInfo, IntfEntry::PhysicalInfo,
                                        &IntfEntryConvertHelperProtobuf::ConvertPhysicalInfo,
                                        &IntfEntryConvertHelperZOR::ConvertPhysicalInfo>;
using FlagsConverter = PartConverter<zorl2::protobuf::InterfaceFlags, IntfEntry::InterfaceFlags,
                                     &IntfEntryConvertHelperProtobuf::ConvertInterfaceFlags,
                                     &IntfEntryConvertHelperZOR::ConvertInterfaceFlags>;
using TypeConverter = PartConverter<zorl2::protobuf::TypeInfo, IntfEntry::TypeInfo,
                                    &IntfEntryConvertHelperProtobuf::ConvertTypeInfo,
                                    &IntfEntryConvertHelperZOR::ConvertTypeInfo>;
using BlockConverter = PartConverter<zorl2::protobuf::BlockInfo, IntfEntry::BlockInfo,
                                     &IntfEntryConvertHelperProtobuf::ConvertBlockInfo,
                                     &IntfEntryConvertHelperZOR::ConvertBlockInfo>;

}  // namespace proof
