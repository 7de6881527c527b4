"""The command line's views of stored diagrams, from Python: the picture (qvdiag render), the
differences between two diagrams (qvdiag diff --format json) and the flow report as data
(qvdiag report --format json). Each runs the qvdiag program that find_executable() finds."""
import json
import os
import subprocess

from .errors import CommandFailed, ServeError
from .server import find_executable


def _run(arguments, executable, allowed=(0,)):
    command = [find_executable(executable)] + [str(argument) for argument in arguments]
    try:
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                              check=False)
    except OSError as error:
        raise ServeError("cannot run %s: %s" % (command[0], error.strerror or error)) from None
    if done.returncode not in allowed:
        raise CommandFailed(command, done.returncode,
                            done.stderr.decode("utf-8", errors="replace"))
    return done.stdout.decode("utf-8")


def render(path, format="svg", rtd_file=None, executable=None):  # noqa: A002 - the CLI's word
    """The picture of the stored diagram at `path` as text: "svg" (default), "dot" or "html"
    (the self-contained viewer). `rtd_file`, the run-time data file that made the diagram, names
    the compute units of its imported connections (docs/pictures.md). Raises CommandFailed with
    qvdiag's message when the file cannot be read or is no stored diagram."""
    arguments = ["render", os.fspath(path), "--format", format]
    if rtd_file is not None:
        arguments += ["--rtd", os.fspath(rtd_file)]
    return _run(arguments, executable)


def diff(old, new, all=False, executable=None):  # noqa: A002 - the CLI's word
    """What changed from the stored diagram `old` to `new`, as the dict of
    `qvdiag diff --format json` (its schema: docs/formats.md); `all=True` lists what did not
    change as well. Raises CommandFailed when either file cannot be read or is no diagram."""
    arguments = ["diff", os.fspath(old), os.fspath(new), "--format", "json"]
    if all:
        arguments.append("--all")
    # qvdiag diff exits 1 when the diagrams differ, as diff does: that is an answer here.
    return json.loads(_run(arguments, executable, allowed=(0, 1)))


def report(path, timestamp=None, executable=None):
    """The flow report of the stored diagram at `path` as data: the dict of
    `qvdiag report --format json`, the report's seven sections (docs/flow-report.md).
    `timestamp` fixes the report's time stamp. Raises CommandFailed when the file cannot be
    read or the library cannot write the report."""
    arguments = ["report", os.fspath(path), "--format", "json"]
    if timestamp is not None:
        arguments += ["--timestamp", timestamp]
    return json.loads(_run(arguments, executable))
