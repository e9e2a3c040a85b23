"""Snapshots of this machine, and of a network namespace with interfaces made for the test."""

import json
import os
import subprocess
import unittest

from support import TOOL, ToolTest


def may_make_namespaces():
    tried = subprocess.run(["unshare", "--net", "--mount", "sh", "-c",
                            "mount -t sysfs none /sys && ip link add br0 type bridge"],
                           stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)
    return tried.returncode == 0, tried.stderr.decode().strip()


def script(lines):
    """Runs in a namespace of its own, with the sysfs of that namespace."""
    text = "set -e\nmount -t sysfs none /sys\n" + lines + '\nexec "$TOOL" snapshot --output json\n'
    done = subprocess.run(["unshare", "--net", "--mount", "sh", "-c", text],
                          env=dict(os.environ, TOOL=TOOL), stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, check=False)
    if done.returncode != 0:
        raise RuntimeError(done.stderr.decode())
    taken = json.loads(done.stdout)
    return {e["generalInfo"]["intf_name"]: e for e in taken["intfEntry"]}


def kernel_has(kind):
    tried = subprocess.run(["unshare", "--net", "sh", "-c", "ip link add d0 type dummy || "
                            "ip link add d0 type veth peer name d1; ip link add " + kind],
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    return tried.returncode == 0


class MachineTest(ToolTest):
    def test_every_interface_of_the_machine_is_in_the_snapshot(self):
        done = self.run_tool("snapshot", "--output", "json")
        taken = json.loads(done.text)
        names = {e["generalInfo"]["intf_name"]: e for e in taken["intfEntry"]}
        self.assertEqual(set(names), set(os.listdir("/sys/class/net")) - {"bonding_masters"})
        for name, entry in names.items():
            def sysfs(file, of=name):
                with open("/sys/class/net/%s/%s" % (of, file), encoding="ascii") as content:
                    return content.read().strip()
            octets = [int(octet) for octet in entry["zorid"].split(".")]
            self.assertEqual(int.from_bytes(bytes(octets), "big"), int(sysfs("ifindex")))
            self.assertEqual(entry["physicalInfo"]["intf_mtu"], int(sysfs("mtu")))
            self.assertEqual(entry["generalInfo"]["phy_addr"], sysfs("address"))
            up = int(sysfs("flags"), 16) & 1
            self.assertEqual(entry["statusInfo"]["adminStatus"],
                             "IF_ADMIN_UP" if up else "IF_ADMIN_DOWN")
            self.assertEqual(entry["statusInfo"]["configShutdown"], not up)
        self.assertEqual(taken["infoClient"]["token"], "zorl2-inspect")

    def test_a_snapshot_in_each_form_is_read_back(self):
        for form in ("wire", "json", "text", "hex"):
            with self.subTest(form):
                file = self.path(form)
                self.run_tool("snapshot", "--output", form, file)
                done = self.run_tool("roundtrip", file)
                self.assertIn("lossless", done.text)


class NamespaceTest(ToolTest):
    def setUp(self):
        super().setUp()
        may, why = may_make_namespaces()
        if not may:
            self.skipTest("this machine does not let the test make network namespaces: " + why)

    def test_a_bridge_with_spanning_tree_and_a_veth_pair(self):
        got = script("""
            ip link add br0 type bridge stp_state 1 forward_delay 2000
            ip link add v0 address 02:00:00:00:00:0a mtu 1400 type veth peer name v1
            ip link set v0 master br0
            ip link set br0 up; ip link set v0 up; ip link set v1 up; sleep 0.2""")
        port, peer, bridge = got["v0"], got["v1"], got["br0"]
        self.assertEqual(port["intfCategory"], "L2")
        self.assertEqual(port["parent"], bridge["zorid"])
        self.assertEqual(port["generalInfo"]["phy_addr"], "02:00:00:00:00:0a")
        self.assertEqual(port["generalInfo"]["bridge_port_number"], 1)
        self.assertEqual(port["physicalInfo"]["intf_mtu"], 1400)
        self.assertEqual(port["statusInfo"]["linkStatus"], "LINK_UP")
        # A port with spanning tree listens before it forwards.
        self.assertEqual(port["blockInfo"], [{"protocol": "STP", "state": "BLOCK_STATE_BLOCK"}])
        self.assertTrue(port["statusInfo"]["extraBlocking"])
        self.assertTrue(port["typeInfo"]["interfaceFlags"]["if_l2_switching"])
        self.assertEqual(port["typeInfo"]["interfaceType"], "ETHERNET")
        self.assertEqual(peer["intfCategory"], "VIRTUAL_IF")
        self.assertEqual(peer["parent"], "0.0.0.0")
        self.assertEqual(peer["blockInfo"], [])
        self.assertEqual(bridge["intfCategory"], "VIRTUAL_IF")
        self.assertEqual(got["lo"]["typeInfo"]["interfaceType"], "OTHER")
        self.assertEqual(got["lo"]["statusInfo"]["adminStatus"], "IF_ADMIN_DOWN")

    def test_a_bridge_without_spanning_tree_forwards(self):
        got = script("""
            ip link add br0 type bridge
            ip link add v0 type veth peer name v1
            ip link set v0 master br0
            ip link set br0 up; ip link set v0 up; ip link set v1 up; sleep 0.2""")
        self.assertEqual(got["v0"]["blockInfo"],
                         [{"protocol": "STP", "state": "BLOCK_STATE_FORWARD"}])
        self.assertFalse(got["v0"]["statusInfo"]["extraBlocking"])

    def test_vlans(self):
        if not kernel_has("link d0 name d0.5 type vlan id 5"):
            self.skipTest("this kernel has no VLAN interfaces")
        got = script("""
            ip link add v0 type veth peer name v1
            ip link add link v0 name c5 type vlan id 5
            ip link add link v0 name s6 type vlan proto 802.1ad id 6""")
        for name, vlan in (("c5", "C_VLAN"), ("s6", "S_VLAN")):
            self.assertEqual(got[name]["typeInfo"]["vlanType"], vlan)
            self.assertEqual(got[name]["typeInfo"]["interfaceType"], "ETHERNET_L2_VLAN")
            self.assertEqual(got[name]["intfCategory"], "L2_SUB_IF")
            self.assertEqual(got[name]["parent"], got["v0"]["zorid"])
            self.assertTrue(got[name]["typeInfo"]["interfaceFlags"]["l2_sub_if"])

    def test_bundles(self):
        if not kernel_has("b0 type bond"):
            self.skipTest("this kernel has no bonds")
        got = script("""
            ip link add bond7 type bond
            ip link add v0 type veth peer name v1
            ip link set v0 master bond7""")
        self.assertEqual(got["bond7"]["typeInfo"]["interfaceType"], "ETHERNET_BUNDLE")
        self.assertTrue(got["v0"]["typeInfo"]["interfaceFlags"]["if_in_bundle"])
        self.assertEqual(got["v0"]["parent"], got["bond7"]["zorid"])


if __name__ == "__main__":
    unittest.main()
