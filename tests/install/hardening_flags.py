"""hardening_flags.py SOURCE_DIR: in each optimised build type, every object of the library, of
zorl2::host, zorl2::check and zorl2-inspect is compiled with the same hardening options."""
import json
import subprocess
import sys
import tempfile
from pathlib import Path

REQUIRED = ("-fstack-protector-strong", "-D_FORTIFY_SOURCE=2", "-U_FORTIFY_SOURCE")
# No shipped file contains these.
EXCEPT = ("host_functions_stub.c",)


def main():
    source = Path(sys.argv[1]).resolve()
    failed = False
    for build_type in ("Release", "RelWithDebInfo", "MinSizeRel"):
        with tempfile.TemporaryDirectory() as build:
            subprocess.run(["cmake", "-G", "Ninja", "-S", source, "-B", build,
                            f"-DCMAKE_BUILD_TYPE={build_type}", "-DZORL2_BUILD_TESTS=OFF"],
                           check=True, stdout=subprocess.DEVNULL)
            commands = json.loads((Path(build) / "compile_commands.json").read_text())
        commands = [c for c in commands if Path(c["file"]).name not in EXCEPT]
        areas = {Path(c["file"]).parts[len(source.parts)] for c in commands
                 if Path(c["file"]).is_relative_to(source)}
        if not {"host", "check", "tools"} <= areas:
            sys.exit(f"FAILED: {build_type}: expected host, check and tools, found {areas}")
        for command in commands:
            options = command["command"].split()
            for required in REQUIRED:
                if required not in options:
                    print(f"FAILED: {build_type}: {command['file']}: no {required}; its target must "
                          "link zorl2_hardening (cmake/Shipped.cmake)")
                    failed = True
            pic = "-fPIC" in options or "-fPIE" in options
            if not pic:
                print(f"FAILED: {build_type}: {command['file']}: not position-independent")
                failed = True
        print(f"proved: {build_type}: {len(commands)} objects")
    return 1 if failed else 0


sys.exit(main())
