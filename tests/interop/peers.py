"""Exchanges every message with two other implementations of Protocol Buffers.

  peers.py DESCRIPTOR_SET TESTDATA CONVERT_BYTES [C_PEER]

For every message of the schema: the pure Python implementation makes the bytes from the text form,
this library reads them, converts them to the native record and back and writes them, and Python
reads the result; the same with the protobuf-c peer. The bytes are the known ones at every step. No
text holds a zero byte, at which protobuf-c would cut it.
"""
import os
import subprocess
import sys

os.environ["PROTOCOL_BUFFERS_PYTHON_IMPLEMENTATION"] = "python"
# pylint: disable=wrong-import-position
from google.protobuf import descriptor_pb2, descriptor_pool, message_factory, text_format
from google.protobuf.internal import api_implementation


def through(program, name, data):
    done = subprocess.run([program, name], input=data, stdout=subprocess.PIPE, check=False)
    if done.returncode != 0:
        raise SystemExit(f"{os.path.basename(program)} {name}: exit {done.returncode}")
    return done.stdout


def expect(condition, text):
    if not condition:
        raise SystemExit(text)


def main():
    descriptors, testdata, convert_bytes = sys.argv[1:4]
    c_peer = sys.argv[4] if len(sys.argv) > 4 else None
    expect(api_implementation.Type() == "python", "this is not the pure Python implementation")
    files = descriptor_pb2.FileDescriptorSet()
    with open(descriptors, "rb") as f:
        files.ParseFromString(f.read())
    pool = descriptor_pool.DescriptorPool()
    for file in files.file:
        pool.Add(file)
    factory = message_factory.MessageFactory(pool)
    exchanged = 0
    for file in files.file:
        for described in file.message_type:
            name = described.name
            message_class = factory.GetPrototype(
                pool.FindMessageTypeByName(f"{file.package}.{name}"))
            with open(os.path.join(testdata, name + ".bin"), "rb") as f:
                known = f.read()
            with open(os.path.join(testdata, name + ".txtpb"), encoding="utf-8") as f:
                message = text_format.Parse(f.read(), message_class())
            made = message.SerializeToString(deterministic=True)
            expect(made == known, f"{name}: Python made {made.hex()} instead of {known.hex()}")
            ours = through(convert_bytes, name, made)
            expect(ours == known, f"{name}: the library made {ours.hex()}, not {known.hex()}")
            expect(message_class.FromString(ours) == message, f"{name}: Python reads it otherwise")
            if c_peer:
                theirs = through(c_peer, name, ours)
                expect(theirs == known, f"{name}: protobuf-c made {theirs.hex()}")
                expect(through(convert_bytes, name, theirs) == known, f"{name}: back from C")
            exchanged += 1
    expect(exchanged == 27, f"{exchanged} messages instead of 27")
    print(f"{exchanged} messages with Python" + (" and protobuf-c" if c_peer else ""))


if __name__ == "__main__":
    main()
