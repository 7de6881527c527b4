"""What the Python tests of the compile server share: the protocol's Python messages, generated
from proto/ by the protoc of the build, and the fixed time stamp the servers they start use."""

import os
import subprocess
import sys

# Handed to every server under test (--timestamp), so that reports compare byte for byte.
FIXED_STAMP = "Mon Nov 23 09:00:00 2026"

PROTO_FILES = ["proto/dispatch.proto", "proto/system_diagram.proto",
               "proto/system_diagram_server.proto"]


def generate_messages(protoc, source_dir, out_dir):
    """Generates the protocol's *_pb2 modules into out_dir and makes them importable as
    proto.dispatch_pb2 and so on."""
    os.makedirs(out_dir, exist_ok=True)
    subprocess.run([protoc, "--proto_path=" + source_dir, "--python_out=" + out_dir]
                   + PROTO_FILES, check=True)
    sys.path.insert(0, out_dir)
