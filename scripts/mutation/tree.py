"""The copy of the sources that scripts/mutate changes, its library and its tests.

The tests are the executables of the CMake tree and load the library dynamically. Everything is
built without optimisation, with clang where there is one. Per change only what depends on the
changed file is compiled again, with precompiled headers, and linked in place.
"""
import filecmp
import json
import os
import re
import resource
import shlex
import shutil
import subprocess

TIMEOUT = "no end"
# The quickest to find something first. A step is built when a change first survives those before.
STEPS = [
    ["convert_test", "state_test", "large_state_test", "unlisted_numbers_test",
     "state_protocol_test", "native_test", "c_functions_test", "c_functions_exhaustion_test",
     "builder_exhaustion_test", "exported_surface_test"],
    ["exhaustion_test", "order_test", "native_exhaustion_test", "differential_test",
     "large_differential_test", "state_fault_test", "state_fault_sites_test"],
    ["convert_allocation_test", "allocation_test", "first_use_test", "known_bytes_test",
     "host_functions_test", "c_functions_c99", "properties_test", "round_trip_test",
     "concurrency_test", "docs_mapping_test"],
]
# For changes of public headers: these are compiled again one after the other, then all others.
HEADER_TESTS = ["native_test", "c_functions_test", "convert_test", "state_test", "c_functions_c99",
                "unlisted_numbers_test", "exported_surface_test", "first_use_test"]
# Without optimisation a template of the standard library may stay beside what is exported.
GTEST_OPTIONS = ["--gtest_fail_fast", "--gtest_brief=1",
                 "--gtest_filter=-ExportedSurface.HoldsNothingElse"]
TEST_HEADERS = """#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <cstdint>
#include <cstring>
#include <limits>
#include <list>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>
#include "information_client.pb.h"
#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "lag.pb.h"
#include "zorid.pb.h"
"""
# What every object includes and nobody here changes.
LIBRARY_HEADERS = """#include <boost/bimap.hpp>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <list>
#include <map>
#include <new>
#include <set>
#include <string>
#include <utility>
#include "information_client.pb.h"
#include "interface_entry.pb.h"
#include "intf_state.pb.h"
#include "lag.pb.h"
#include "zorid.pb.h"
"""
# The instantiations that cost the most, made once: for changes outside of native/ only.
INSTANTIATIONS = """#include "native/info_client_config.h"
#include "native/intf_entry_builder.h"
#include "native/intf_state_signals.h"
#include "native/lag_member_operation.h"
template <typename Message, typename Native>
inline void InstantiateBimap(Message message, Native native) {
  using Bimap = boost::bimap<Message, Native>;
  Bimap bimap;
  bimap.insert(typename Bimap::value_type(message, native));
  bimap.left.at(message);
  bimap.right.at(native);
}
inline void InstantiateBimaps() {
"""
ENUMERATIONS = ["AdminStatus", "OperationalStatus", "LinkStatus", "EthernetSpeed",
                "EthernetDuplexMode", "InterfaceType", "VlanType"]


def run(command, timeout=900, cwd=None, quiet=True, prepare=None):
    """The exit code."""
    with subprocess.Popen(command, cwd=cwd, start_new_session=True, preexec_fn=prepare,
                          stdout=subprocess.DEVNULL if quiet else None,
                          stderr=subprocess.STDOUT if quiet else None) as process:
        try:
            return process.wait(timeout)
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, 9)
            process.wait()
            return TIMEOUT


class Tree:
    def __init__(self, root):
        self.root = root
        work = os.path.join(root, "build", "mutation")
        self.source = os.path.join(work, "source")
        self.build = os.path.join(work, "build")
        self.objects = os.path.join(work, "objects")
        self.library = os.path.join(self.build, "libzorl2_serialize.so.1.0.0")
        self.kept = os.path.join(self.objects, "library.kept")
        self.built = set()
        os.makedirs(self.objects, exist_ok=True)

    def prepare(self):
        self._copy_sources()
        if os.path.exists(self.library):
            os.remove(self.library)  # It may be a changed one.
        clang = shutil.which("clang++")
        self.clang = clang is not None
        self.compiler = clang or shutil.which("c++")
        flags, compilers = "-O0 -DNDEBUG -w", []
        if clang:
            compilers = [f"-DCMAKE_CXX_COMPILER={clang}"]
            # The host functions include a header that only gcc brings along.
            include = subprocess.check_output(["gcc", "-print-file-name=include"], text=True)
            flags += " -idirafter " + include.strip()
        if run(["cmake", "-S", self.source, "-B", self.build, "-G", "Ninja", *compilers,
                "-DCMAKE_BUILD_TYPE=Release", f"-DCMAKE_CXX_FLAGS_RELEASE={flags}",
                "-DZORL2_BUILD_TOOLS=OFF", "-DCMAKE_UNITY_BUILD=OFF"]) != 0:
            raise SystemExit("mutate: the tree does not configure")
        self._ninja("zorl2_serialize", "zorl2_host")
        shutil.copy2(self.library, self.kept)
        self._read_commands()
        self.precompiled = {}

    def executables(self, step):
        """Those of one step. Built against the unchanged sources: before a change is applied."""
        executables = [self._executable(name) for name in STEPS[step]]
        if step not in self.built:
            self._ninja(*STEPS[step])
            self.built.add(step)
            for executable in executables:
                if self.fails(executable):
                    raise SystemExit(f"mutate: {executable} fails without any change")
        return executables

    def fails(self, executable):
        """Also when it does not end, twice: the machine may have been busy the first time."""
        options = GTEST_OPTIONS if "_test" in executable else []
        limits = {resource.RLIMIT_CPU: 30}
        if "exhaustion" not in executable:  # One of these maps more than any machine has.
            limits[resource.RLIMIT_AS] = 8 << 30

        def limit():
            for what, most in limits.items():
                resource.setrlimit(what, (most, most))

        for _ in range(2):
            code = run([executable, *options], timeout=60, cwd=self.build, prepare=limit)
            if code != TIMEOUT:
                break
        return code != 0

    def apply(self, change):
        file = os.path.join(self.source, change.path)
        with open(file) as f:
            self.original = f.read()
        lines = self.original.split("\n")
        if "\n".join(lines[change.line:change.line + change.count]) != change.old:
            raise SystemExit(f"mutate: {change.path} has changed meanwhile")
        lines[change.line:change.line + change.count] = change.new.split("\n")
        with open(file, "w") as f:
            f.write("\n".join(lines))

    def restore(self, change):
        with open(os.path.join(self.source, change.path), "w") as f:
            f.write(self.original)
        if not filecmp.cmp(self.kept, self.library, shallow=False):
            shutil.copy2(self.kept, self.library)

    def link_changed(self, change):
        """Compiles what depends on the changed file and links it; False when that fails."""
        affected = [p for p in self.own if self._depends(p, change)]
        together = [p for p in affected if not p.startswith("c_api/")]
        replaced = {}
        # Several that depend on one header are compiled as one.
        for group in [together] + [[p] for p in affected if p.startswith("c_api/")]:
            if group:
                text = "full" if not change.path.startswith("native/") else "plain"
                output = os.path.join(self.objects, f"changed{len(replaced)}.o")
                if not self._compile(group, text if group is together else None, output):
                    return False
                replaced[group[0]] = output
        kept = [self.objects_of[p] for p in self.own if p not in affected]
        return run([self.compiler, "-shared", "-fPIC", "-o", self.library,
                    "-Wl,-soname,libzorl2_serialize.so.1", "-Wl,-z,nodelete",
                    "-Wl,-Bsymbolic-functions", "-Wl,--gc-sections", "-Wl,-z,relro",
                    f"-Wl,--version-script={self.source}/cmake/exports.map", *kept,
                    *replaced.values(), *self.generated, "-lprotobuf"]) == 0

    def depends(self, executable, change):
        """Whether a test is itself compiled from the changed file."""
        return any(self._depends(path, change) for path in self.sources_of(executable))

    def sources_of(self, executable):
        name = os.path.basename(executable)
        return [path for path, target in self.targets if target == name]

    def compile_records(self, change):
        """The objects of native/ with the change, or None."""
        outputs = []
        for path in self.own:
            if path.startswith("native/") and self._depends(path, change):
                outputs.append(os.path.join(self.objects, "changed_" + os.path.basename(path)))
                if not self._compile([path], None, outputs[-1] + ".o"):
                    return None
        return [output + ".o" for output in outputs]

    def compile_test(self, executable, change, first=()):
        """Compiles a test again with the change; the new executable, or None."""
        name = os.path.basename(executable)
        command = subprocess.check_output(["ninja", "-C", self.build, "-t", "commands", name],
                                          text=True).split("\n")
        link = [line for line in command if line.strip()][-1]
        for path in self.sources_of(executable):
            if not self._depends(path, change):
                continue
            output = os.path.join(self.objects, "test_" + os.path.basename(path) + ".o")
            if not self._compile([path], "tests", output, name):
                return None
            link = link.replace(os.path.relpath(self.objects_of[path, name], self.build), output)
        output = os.path.join(self.objects, name)
        link = re.sub(rf"-o \S*/{name}\b", f"{' '.join(first)} -o {output}", link)
        return output if run(["sh", "-c", link], cwd=self.build) == 0 else None

    def rebuild_everything(self):
        """All tests, when one public header has changed; the library with them."""
        names = sorted({name for step in STEPS for name in step})
        return run(["ninja", "-j1", "-C", self.build, *names], timeout=3600) == 0

    def all_executables(self):
        return [self._executable(name) for step in STEPS for name in step]

    def _ninja(self, *targets):
        if run(["ninja", "-C", self.build, "--quiet", *targets], quiet=False, timeout=3600) != 0:
            raise SystemExit("mutate: the tests do not build")

    def _executable(self, name):
        area = next(area for area in sorted(os.listdir(os.path.join(self.build, "tests")))
                    if os.path.isdir(os.path.join(self.build, "tests", area, "CMakeFiles",
                                                  name + ".dir")))
        return os.path.join(self.build, "tests", area, name)

    def _copy_sources(self):
        """Brings the copy up to date, and leaves alone what has not changed."""
        names = subprocess.check_output(["git", "-C", self.root, "ls-files", "-z", "-c", "-o",
                                         "--exclude-standard"]).decode().split("\0")
        for name in filter(None, names):
            old, new = os.path.join(self.root, name), os.path.join(self.source, name)
            if os.path.isfile(old) and not (os.path.exists(new)
                                            and filecmp.cmp(old, new, shallow=False)):
                os.makedirs(os.path.dirname(new), exist_ok=True)
                shutil.copy(old, new)

    def _read_commands(self):
        with open(os.path.join(self.build, "compile_commands.json")) as f:
            commands = json.load(f)
        self.commands, self.objects_of, self.targets = {}, {}, []
        self.own, self.generated, self.included = [], [], {}
        for entry in commands:
            words = shlex.split(entry["command"])
            output = os.path.join(self.build, words[words.index("-o") + 1])
            target = re.search(r"(\w+)\.dir/", output).group(1)
            path = os.path.relpath(entry["file"], self.source)
            if target == "zorl2_generated":
                self.generated.append(output)
            elif target == "zorl2_own":
                self.own.append(path)
                self.commands[path] = words[:words.index("-o")]
                self.objects_of[path] = output
            elif path.startswith(("tests/", "convert/")):
                self.targets.append((path, target))
                self.commands[path, target] = words[:words.index("-o")]
                self.objects_of[path, target] = output

    def _depends(self, path, change):
        if path not in self.included:
            self.included[path] = self._includes(path, set())
        return path == change.path or change.path in self.included[path]

    def _includes(self, path, seen):
        """The files of this tree that a file includes, however far down."""
        with open(os.path.join(self.source, path)) as f:
            names = re.findall(r'^#include "([^"]+)"', f.read(), re.M)
        for name in names:
            for found in (name, os.path.join(os.path.dirname(path), name)):
                if found not in seen and os.path.isfile(os.path.join(self.source, found)):
                    seen.add(found)
                    self._includes(found, seen)
        return seen

    def _precompiled(self, text, command):
        """The options that bring in a precompiled header made with the same command."""
        key = (text, *command)
        if key not in self.precompiled:
            bimaps = "".join(f"  InstantiateBimap(zorl2::protobuf::{e}(), IntfEntry::{e}());\n"
                             for e in ENUMERATIONS)
            content = {"plain": LIBRARY_HEADERS, "tests": TEST_HEADERS,
                       "full": LIBRARY_HEADERS + INSTANTIATIONS + bimaps + "}\n"}[text]
            header = os.path.join(self.objects, f"{text}{len(self.precompiled)}.h")
            with open(header, "w") as f:
                f.write(content)
            output = header + (".pch" if self.clang else ".gch")
            options = ["-Xclang", "-fpch-instantiate-templates"] if self.clang else []
            made = run([*command, "-x", "c++-header", header, "-o", output, *options]) == 0
            use = ["-include-pch", output] if self.clang else ["-include", header]
            self.precompiled[key] = use if made else []
        return self.precompiled[key]

    def _compile(self, paths, text, output, target=None):
        command = self.commands[(paths[0], target) if target else paths[0]]
        file = os.path.join(self.source, paths[0])
        if len(paths) > 1:
            file = os.path.join(self.objects, "together.cpp")
            with open(file, "w") as f:
                f.writelines(f'#include "{os.path.join(self.source, path)}"\n' for path in paths)
        extra = self._precompiled(text, command) if text and not paths[0].endswith(".c") else []
        return run([*command, *extra, "-c", file, "-o", output]) == 0
