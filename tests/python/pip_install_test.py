#!/usr/bin/python3
"""pip install ./python into a fresh virtual environment that sees Debian's packages, without
network, from a copy of the repository's python/ and proto/ folders as a clone has them; then
the installed package drives a server.

    pip_install_test.py --qvdiag BUILD/qvdiag --protoc PROTOC --source-dir REPO
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile
import unittest

ARGS = None

# Run by the virtual environment's interpreter: the package must come from the environment,
# with the protocol's modules its build step generated, and talk to a real server.
CHECK = r'''
import os, sys, tempfile
import qvdiag
from qvdiag._proto import system_diagram_server_pb2
site = os.path.join(sys.prefix, "lib")
assert qvdiag.__file__.startswith(site), qvdiag.__file__
assert system_diagram_server_pb2.__file__.startswith(site)
out = tempfile.mkdtemp()
with qvdiag.serve() as server, server.connect() as client:
    session = client.create_session(name="pip")
    session.upsert_qsa_clock(clock={"name": "clk_pip", "id": 3, "frequency": 125})
    session.write_system_diagram(os.path.join(out, "d.json"))
    try:
        session.write_flow_report()
    except qvdiag.RequestFailed as failure:
        print(failure)
clock = qvdiag.load_diagram(os.path.join(out, "d.json")).clocks[0]
print(clock.name, clock.id, clock.frequency)
'''


class PipInstallTest(unittest.TestCase):
    def setUp(self):
        self.tmp = tempfile.mkdtemp(prefix="qvdiag-pip-")
        self.addCleanup(shutil.rmtree, self.tmp, True)

    def run_checked(self, command, **kwargs):
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              text=True, timeout=240, **kwargs)
        self.assertEqual(done.returncode, 0, "%s\n%s\n%s" % (command, done.stdout, done.stderr))
        return done

    def test_pip_install_into_a_fresh_environment_gives_a_working_package(self):
        clone = os.path.join(self.tmp, "clone")
        for folder in ("python", "proto"):
            shutil.copytree(os.path.join(ARGS.source_dir, folder), os.path.join(clone, folder),
                            ignore=shutil.ignore_patterns("build", "*.egg-info",
                                                          "__pycache__"))
        env = {key: value for key, value in os.environ.items()
               if key not in ("PYTHONPATH", "QVDIAG")}
        env["PROTOC"] = ARGS.protoc
        venv = os.path.join(self.tmp, "venv")
        self.run_checked([sys.executable, "-m", "venv", "--system-site-packages", venv],
                         env=env)
        python = os.path.join(venv, "bin", "python")
        self.run_checked([python, "-m", "pip", "install", "--no-build-isolation", "--no-index",
                          "--quiet", os.path.join(clone, "python")], env=env, cwd=self.tmp)
        self.assertFalse(os.path.exists(os.path.join(
            clone, "python", "qvdiag", "_proto")), "the build wrote into the sources")

        env["QVDIAG"] = ARGS.qvdiag
        done = self.run_checked([python, "-c", CHECK], env=env, cwd=self.tmp)
        self.assertEqual(done.stdout, "WriteFlowReport was answered 400 Bad Request\n"
                                      "clk_pip 3 125.0\n")


def main():
    global ARGS
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qvdiag", required=True)
    parser.add_argument("--protoc", required=True)
    parser.add_argument("--source-dir", required=True)
    ARGS, rest = parser.parse_known_args()
    ARGS.qvdiag = os.path.abspath(ARGS.qvdiag)
    ARGS.source_dir = os.path.abspath(ARGS.source_dir)
    unittest.main(argv=[sys.argv[0]] + rest, verbosity=2)


if __name__ == "__main__":
    main()
