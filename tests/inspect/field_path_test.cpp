// Fields by their path, in messages and in bytes.
#include "tools/model/field_path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "interface_entry.pb.h"
#include "tools/model/field_text.h"
#include "tools/text/error.h"
#include "tools/wire/wire_find.h"

namespace {

namespace pb = zorl2::protobuf;
using testing::ElementsAre;
using testing::HasSubstr;
using zorl2_inspect::FieldPath;

pb::IntfEntryList List() {
  pb::IntfEntryList list;
  for (const std::uint32_t number : {7u, 8u}) {
    pb::IntfEntry& entry = *list.add_intfentry();
    for (const std::uint32_t value : {0u, 0u, 0u, number}) entry.mutable_zorid()->add_value(value);
    entry.mutable_generalinfo()->set_intf_name("ge-" + std::to_string(number));
    entry.add_shutdownprotos(pb::LACP);
    if (number == 8) entry.add_shutdownprotos(pb::STP);
  }
  list.mutable_intfentry(1)->mutable_statusinfo()->set_operationalstatus(pb::DOWN);
  return list;
}

std::vector<std::string> Values(const std::string& path) {
  const pb::IntfEntryList list = List();
  const FieldPath field(*pb::IntfEntryList::descriptor(), path);
  std::vector<std::string> values;
  field.ForEach(list, [&](const google::protobuf::Message& parent, int index) {
    values.push_back(zorl2_inspect::ValueText(parent, field.field(), index));
  });
  return values;
}

std::string ErrorOf(const std::string& path) {
  try {
    FieldPath(*pb::IntfEntryList::descriptor(), path);
  } catch (const zorl2_inspect::Error& error) {
    return error.what();
  }
  return "no error";
}

TEST(FieldPath, NamesOneField) {
  EXPECT_THAT(Values("intfEntry[1].generalInfo.intf_name"), ElementsAre("\"ge-8\""));
  EXPECT_THAT(Values("intfEntry[0].zorid"), ElementsAre("0.0.0.7"));
  EXPECT_THAT(Values("intfEntry[1].shutdownProtos[1]"), ElementsAre("STP"));
}

TEST(FieldPath, WithoutAnIndexNamesAllElements) {
  EXPECT_THAT(Values("intfEntry.zorid"), ElementsAre("0.0.0.7", "0.0.0.8"));
  EXPECT_THAT(Values("intfEntry.shutdownProtos"), ElementsAre("LACP", "LACP", "STP"));
}

TEST(FieldPath, SkipsWhatIsAbsent) {
  EXPECT_THAT(Values("intfEntry.statusInfo.operationalStatus"), ElementsAre("DOWN"));
  EXPECT_THAT(Values("intfEntry[2].zorid"), ElementsAre());
  EXPECT_THAT(Values("infoClient.token"), ElementsAre());
}

TEST(FieldPath, ListsTheFieldsThatExist) {
  EXPECT_THAT(ErrorOf("intfEntry.generalInfo.name"),
              HasSubstr("\"name\" (expected a field of GeneralInfo: intf_name, phy_addr, "));
  EXPECT_THAT(ErrorOf(""), HasSubstr("a field of IntfEntryList: infoClient, intfEntry)"));
  EXPECT_THAT(ErrorOf("infoClient.token.x"), HasSubstr("expected the end of the path"));
  EXPECT_THAT(ErrorOf("intfEntry[x]"), HasSubstr("expected intfEntry[NUMBER]"));
  EXPECT_THAT(ErrorOf("intfEntry[1"), HasSubstr("expected intfEntry[NUMBER]"));
  EXPECT_THAT(ErrorOf("infoClient[0]"), HasSubstr("expected infoClient)"));
}

TEST(OffsetOf, FindsAFieldOrTheMessageAroundIt) {
  // A list of two entries: {zorid: {value: 7}} and {typeInfo: {interfaceType: 17}}.
  const std::string bytes("\x12\x05\x0a\x03\x0a\x01\x07\x12\x04\x32\x02\x08\x11", 13);
  const auto offset = [&](const char* path) {
    return zorl2_inspect::OffsetOf(bytes, *pb::IntfEntryList::descriptor(), path);
  };
  EXPECT_EQ(offset("intfEntry[0].zorid"), 2u);
  EXPECT_EQ(offset("intfEntry[1].typeInfo.interfaceType"), 11u);
  EXPECT_EQ(offset("intfEntry[1].typeInfo.vlanType"), 9u);
  EXPECT_EQ(offset("intfEntry[1].intfCategory"), 7u);
  EXPECT_EQ(offset("infoClient"), 0u);
}

}  // namespace
