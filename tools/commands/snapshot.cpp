#include <unistd.h>

#include <CLI/App.hpp>
#include <CLI/Validators.hpp>
#include <memory>
#include <stdexcept>
#include <string>

#include "convert/info_client_config_converter.h"
#include "convert/intf_entry_converter.h"
#include "tools/commands/commands.h"
#include "tools/commands/options.h"
#include "tools/model/message_forms.h"
#include "tools/system/kernel_links.h"
#include "tools/text/error.h"
#include "tools/text/output.h"

namespace zorl2_inspect {
namespace {

namespace pb = zorl2::protobuf;

struct SnapshotArguments {
  std::string file = "-";
  std::string form;
  bool force = false;
};

// The snapshot answers a client that asked for everything and acts for no protocol.
ZORL2InfoClientConfig Client() {
  ZORL2InfoClientConfig client;
  client.protocolType = PROTOCOL_UNKNOWN;
  client.interfaceCategories = {L1, L2, VP, L2_SUB_IF, VIRTUAL_IF};
  client.clientAddress = 1;
  client.token = "zorl2-inspect";
  return client;
}

int RunSnapshot(const SnapshotArguments& arguments) {
  pb::IntfEntryList list;
  if (!ZORL2InfoClientConfigConverter().Convert(Client(), *list.mutable_infoclient())) {
    throw std::runtime_error("the registration cannot be converted");
  }
  IntfEntryConverter converter;
  for (const IntfEntry& entry : KernelEntries()) {
    if (!converter.Convert(entry, *list.add_intfentry())) {
      throw std::runtime_error("the interface " + entry.getGeneralInfo().intf_name +
                               " cannot be converted");
    }
  }
  std::string form = arguments.form;
  if (form.empty()) form = arguments.file == "-" && isatty(STDOUT_FILENO) == 1 ? "json" : "wire";
  Output output(arguments.file);
  if (form == "wire") output.RejectTerminal(arguments.force);
  MessageWriter(output, FormNamed(form), false).Write(list);
  output.Finish();
  return kExitOk;
}

}  // namespace

void AddSnapshotCommand(CLI::App& app, int& status) {
  auto arguments = std::make_shared<SnapshotArguments>();
  CLI::App* command = app.add_subcommand(
      "snapshot", "Write the network interfaces of this machine as an IntfEntryList");
  command->add_option("FILE", arguments->file, "Write to this file; to standard output if omitted")
      ->type_name("");
  command
      ->add_option("--output", arguments->form,
                   "Set the form of the output; if omitted, json on a terminal, else wire")
      ->check(CLI::IsMember({"wire", "json", "text", "hex"}))
      ->type_name("FORM");
  AddForceOption(*command, arguments->force);
  command->footer(
      "The fields and their sources:\n"
      "  zorid           the interface index as four octets, the most significant first\n"
      "  parent          the master, else the lower link of a VLAN, else 0.0.0.0\n"
      "  generalInfo     name, MAC address, bridge port number; no redundancy group\n"
      "  statusInfo      IFF_UP, operational state, carrier, speed in kbit/s (0: not\n"
      "                  known); configShutdown: not IFF_UP; extraBlocking: STP does\n"
      "                  not forward\n"
      "  physicalInfo    MTU, speed class (SPEED_UNKNOWN: none fits), duplex mode\n"
      "  interfaceType   ETHERNET_L2_VLAN, ETHERNET_BUNDLE (bond, team), ETHERNET, else\n"
      "                  OTHER\n"
      "  interfaceFlags  if_l2_switching: bridge port; if_in_bundle: port of a bond or\n"
      "                  team; l2_bundle: bundle that is a bridge port; l2_sub_if:\n"
      "                  VLAN; point_to_point, if_multicast: the kernel's flags\n"
      "  vlanType        S_VLAN for 802.1ad, C_VLAN for 802.1Q, else NONE\n"
      "  blockInfo       STP, for a bridge port: forwarding or not\n"
      "  intfCategory    L2_SUB_IF: VLAN; L2: bridge port; L1: physical; else\n"
      "                  VIRTUAL_IF\n\n"
      "Exit status: 0 done, 2 error.\n\n"
      "Examples:\n"
      "  zorl2-inspect snapshot --output json\n"
      "  zorl2-inspect snapshot | zorl2-inspect show -");
  command->callback([arguments, &status] { status = RunSnapshot(*arguments); });
}

}  // namespace zorl2_inspect
