// A manager and a client in two processes, joined by a pair of sockets.
//
// The manager sends an interface entry, a shutdown signal and a blocking signal. The client turns
// each into its native record, applies it, and sends its entry back, so that the manager can check
// that nothing was lost. Each message follows one byte with its type and its length, because
// Protocol Buffers carry neither.
#include <google/protobuf/io/zero_copy_stream_impl.h>
#include <google/protobuf/util/delimited_message_util.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>

#include "check/check.h"
#include "convert/intf_entry_converter.h"
#include "convert/intf_state_converter.h"
#include "native/intf_entry_builder.h"

namespace pb = zorl2::protobuf;
namespace io = google::protobuf::io;

enum class Kind : std::uint8_t { kEntry = 1, kShutState = 2, kBlockState = 3 };

static bool Send(int fd, Kind kind, const google::protobuf::Message& message) {
  io::FileOutputStream stream(fd);
  {
    io::CodedOutputStream coded(&stream);
    coded.WriteRaw(&kind, 1);
  }
  return google::protobuf::util::SerializeDelimitedToZeroCopyStream(message, &stream) &&
         stream.Flush();
}

// Returns false at the end of the stream.
static bool ReceiveKind(io::FileInputStream& stream, Kind& kind) {
  io::CodedInputStream coded(&stream);
  return coded.ReadRaw(&kind, 1);
}

static bool Receive(io::FileInputStream& stream, google::protobuf::Message& message) {
  bool clean_eof = false;
  return google::protobuf::util::ParseDelimitedFromZeroCopyStream(&message, &stream, &clean_eof);
}

// A malformed identifier in a state signal terminates the process, so the client checks each signal
// first.
static bool Converts(const google::protobuf::Message& message) {
  const zorl2::check::Verdict verdict = zorl2::check::Check(message);
  if (verdict.outcome == zorl2::check::Outcome::kConverts) return true;
  std::printf("client:  %s: %s\n", verdict.field.c_str(), verdict.reason.c_str());
  return false;
}

static const zorid_t kPort = {{10, 0, 0, 1}};

static IntfEntry PortEntry() {
  IntfEntry::GeneralInfo general;
  general.intf_name = "ge-0/0/1";
  general.phy_addr = "02:00:5e:10:00:01";
  general.bridge_port_number = 1;
  IntfEntry::StatusInfo status;
  status.operationalSpeed = 10000000;
  IntfEntry::PhysicalInfo physical;
  physical.intf_mtu = 9216;
  physical.eth_speed = IntfEntry::SPEED_10_GBS;
  physical.eth_duplex_mode = IntfEntry::FULL;
  IntfEntry::TypeInfo type;
  type.interfaceType = IntfEntry::ETHERNET;
  type.interfaceFlags.if_l2_switching = true;
  return IntfEntryBuilder()
      .addZorId(kPort)
      .addGeneralInfo(general)
      .addStatusInfo(status)
      .addPhysicalInfo(physical)
      .addTypeInfo(type)
      .addShutdownProto(STP)
      .addBlockInfo({ERPS, BLOCK_STATE_BLOCK})
      .setInterfaceCategory(L2)
      .Build();
}

static int Client(int fd) {
  io::FileInputStream stream(fd);
  IntfEntry entry;
  ShutStateInfoSyncSignal shut;
  BlockStateInfoSyncSignal block;
  Kind kind;
  while (ReceiveKind(stream, kind)) {
    if (kind == Kind::kEntry) {
      pb::IntfEntry message;
      if (!Receive(stream, message) || !IntfEntryConverter().Convert(message, entry)) return 1;
      std::printf("client:  entry of %s, MTU %llu\n", entry.getGeneralInfo().intf_name.c_str(),
                  static_cast<unsigned long long>(entry.getPhysicalInfo().intf_mtu));
    } else if (kind == Kind::kShutState) {
      pb::ShutStateSync message;
      if (!Receive(stream, message) || !Converts(message)) return 1;
      // Merges: interfaces that the message does not name keep their states.
      if (!ShutStateConverter().Convert(message, shut)) return 1;
      std::printf("client:  protocol %d %s the port\n", shut.protocol,
                  shut.shutStates.at(kPort) ? "shuts" : "releases");
    } else if (kind == Kind::kBlockState) {
      pb::BlockStateSync message;
      if (!Receive(stream, message) || !Converts(message)) return 1;
      if (!BlockStateConverter().Convert(message, block)) return 1;
      std::printf("client:  protocol %d %s the port\n", block.protocol,
                  block.blockStates.at(kPort) == BLOCK_STATE_BLOCK ? "blocks" : "opens");
      // This is the last of the three messages, so the client sends its entry back.
      pb::IntfEntry answer;
      if (!IntfEntryConverter().Convert(entry, answer)) return 1;
      return Send(fd, Kind::kEntry, answer) ? 0 : 1;
    } else {
      return 1;
    }
  }
  return 1;
}

static int Manager(int fd) {
  pb::IntfEntry sent;
  if (!IntfEntryConverter().Convert(PortEntry(), sent)) return 1;
  ShutStateInfoSyncSignal shut;
  shut.protocol = LACP;
  shut.shutStates[kPort] = true;
  pb::ShutStateSync shut_message;
  BlockStateInfoSyncSignal block;
  block.protocol = ERPS;
  block.blockStates[kPort] = BLOCK_STATE_BLOCK;
  pb::BlockStateSync block_message;
  if (!ShutStateConverter().Convert(shut, shut_message) ||
      !BlockStateConverter().Convert(block, block_message) || !Send(fd, Kind::kEntry, sent) ||
      !Send(fd, Kind::kShutState, shut_message) || !Send(fd, Kind::kBlockState, block_message)) {
    return 1;
  }

  io::FileInputStream stream(fd);
  Kind kind;
  pb::IntfEntry answer;
  if (!ReceiveKind(stream, kind) || kind != Kind::kEntry || !Receive(stream, answer)) return 1;
  const bool same = answer.SerializeAsString() == sent.SerializeAsString();
  std::printf("manager: the entry came back %s, %zu bytes\n", same ? "unchanged" : "CHANGED",
              answer.ByteSizeLong());
  return same ? 0 : 1;
}

int main() {
  int sockets[2];
  if (socketpair(AF_UNIX, SOCK_STREAM, 0, sockets) != 0) return 1;
  const pid_t client = fork();
  if (client < 0) return 1;
  if (client == 0) {
    close(sockets[0]);
    return Client(sockets[1]);
  }
  close(sockets[1]);
  const int result = Manager(sockets[0]);
  close(sockets[0]);
  int status = 0;
  waitpid(client, &status, 0);
  return result == 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0 ? 0 : 1;
}
