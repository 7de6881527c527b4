"""The package's build step: generates the protocol's modules with protoc into the build's copy
of the package, so that no generated file lives in the repository.

protoc is $PROTOC when set, else the protoc on PATH (Debian: protobuf-compiler). The .proto files
are read from $QVDIAG_PROTO_ROOT/proto when set, else from the repository this folder sits in.
"""
import os
import shutil
import sys

from setuptools import setup
from setuptools.command.build_py import build_py

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, HERE)
import generate_protocol  # noqa: E402


class BuildWithProtocol(build_py):
    def run(self):
        super().run()
        protoc = os.environ.get("PROTOC") or shutil.which("protoc")
        if not protoc:
            raise SystemExit("qvdiag: protoc is needed to build the package "
                             "(Debian: apt-get install protobuf-compiler, or set PROTOC)")
        root = os.environ.get("QVDIAG_PROTO_ROOT") or os.path.dirname(HERE)
        try:
            generate_protocol.generate(protoc, root, os.path.join(self.build_lib, "qvdiag"))
        except RuntimeError as error:
            raise SystemExit("qvdiag: " + str(error))


setup(cmdclass={"build_py": BuildWithProtocol})
