// Every message of the schema has a file of known bytes beside its text form, and both say the
// same. The bytes were not made by this library.
#include <google/protobuf/descriptor.h>
#include <google/protobuf/dynamic_message.h>
#include <google/protobuf/text_format.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>

#include "audit_info.pb.h"
#include "interface_entry.pb.h"
#include "l2_sub_if.pb.h"
#include "lag.pb.h"
#include "sysinfo.pb.h"
#include "virtual_if.pb.h"

namespace pb = zorl2::protobuf;

namespace {

const std::filesystem::path kFiles = ZORL2_SOURCE_DIR "/tests/testdata/messages";

std::string Contents(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

std::set<std::string> SchemaMessages() {
  std::set<std::string> names;
  for (const google::protobuf::FileDescriptor* file :
       {pb::Zorid::descriptor()->file(), pb::InformationClient::descriptor()->file(),
        pb::IntfEntry::descriptor()->file(), pb::ShutStateSync::descriptor()->file(),
        pb::LagLoadBalance::descriptor()->file(), pb::L2SubinterfaceOperation::descriptor()->file(),
        pb::VirtualInterfaceOperation::descriptor()->file(), pb::SysInfo::descriptor()->file(),
        pb::AuditInfo::descriptor()->file()}) {
    for (int i = 0; i < file->message_type_count(); ++i) {
      names.insert(file->message_type(i)->name());
    }
  }
  return names;
}

TEST(KnownBytes, EveryMessageHasBothFiles) {
  const std::set<std::string> names = SchemaMessages();
  EXPECT_EQ(names.size(), 27U);
  std::set<std::string> bytes, texts;
  for (const auto& entry : std::filesystem::directory_iterator(kFiles)) {
    (entry.path().extension() == ".bin" ? bytes : texts).insert(entry.path().stem());
  }
  EXPECT_EQ(bytes, names);
  EXPECT_EQ(texts, names);
}

TEST(KnownBytes, BytesAndTextAreTheSameMessage) {
  const auto& pool = *google::protobuf::DescriptorPool::generated_pool();
  auto& factory = *google::protobuf::MessageFactory::generated_factory();
  for (const std::string& name : SchemaMessages()) {
    SCOPED_TRACE(name);
    const auto* prototype =
        factory.GetPrototype(pool.FindMessageTypeByName("zorl2.protobuf." + name));
    const std::unique_ptr<google::protobuf::Message> message(prototype->New());
    const std::string bytes = Contents(kFiles / (name + ".bin"));
    ASSERT_TRUE(google::protobuf::TextFormat::ParseFromString(Contents(kFiles / (name + ".txtpb")),
                                                              message.get()));
    EXPECT_EQ(message->SerializeAsString(), bytes);
    ASSERT_TRUE(message->ParseFromString(bytes));
    EXPECT_TRUE(message->GetReflection()->GetUnknownFields(*message).empty());
    EXPECT_EQ(message->SerializeAsString(), bytes);
  }
}

}  // namespace
