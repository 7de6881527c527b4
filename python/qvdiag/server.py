"""qvdiag serve as a context manager, on a Unix socket in a directory of its own."""
import os
import selectors
import shutil
import signal
import subprocess
import tempfile
import time

from .client import Client
from .errors import ServeError


def find_executable(executable=None):
    """The qvdiag program to run: `executable` when given, else $QVDIAG, else the one built
    beside this copy of the package (when it is imported from the build tree), else qvdiag on
    PATH. Raises ServeError when none is found."""
    # A path is made absolute, as the server may run in another working directory.
    for given in (executable, os.environ.get("QVDIAG")):
        if given:
            return os.path.abspath(given) if os.sep in given else given
    try:
        from ._build_tree import QVDIAG_EXECUTABLE
    except ImportError:
        QVDIAG_EXECUTABLE = None
    if QVDIAG_EXECUTABLE and os.path.exists(QVDIAG_EXECUTABLE):
        return QVDIAG_EXECUTABLE
    found = shutil.which("qvdiag")
    if found:
        return found
    raise ServeError("cannot find the qvdiag program: pass executable=, set QVDIAG, or put it "
                     "on PATH")


class Server:
    """One running `qvdiag serve`, listening on `address` ("unix:<private dir>/compile.sock").

    Made by qvdiag.serve(). Its standard error (the library's user messages, and the service
    trace unless `log` was given) goes to a file in the private directory; `stderr` holds that
    text once the server has stopped.
    """

    def __init__(self, executable=None, platform_path=(), timestamp=None, log=None,
                 log_level=None, library=None, cwd=None, ready_timeout=30.0):
        program = find_executable(executable)
        # mkdtemp makes the directory 0700: nobody else reaches the socket, whatever its mode.
        self.directory = tempfile.mkdtemp(prefix="qvdiag-serve-")
        self.socket_path = os.path.join(self.directory, "compile.sock")
        self.address = "unix:" + self.socket_path
        self.stderr = None
        self.returncode = None
        self._stderr_path = os.path.join(self.directory, "serve.err")
        command = [program, "serve", "--listen", self.address]
        if isinstance(platform_path, (str, os.PathLike)):
            platform_path = [platform_path]
        for directory in platform_path:
            command += ["--platform-path", os.path.abspath(directory)]
        if timestamp is not None:
            command += ["--timestamp", timestamp]
        if log is not None:
            command += ["--log", os.path.abspath(log)]
        if log_level is not None:
            command += ["--log-level", str(log_level)]
        if library is not None:
            command += ["--library", os.path.abspath(library)]
        self.command = command
        try:
            with open(self._stderr_path, "w") as stderr:
                self.process = subprocess.Popen(command, stdout=subprocess.PIPE, stderr=stderr,
                                                stdin=subprocess.DEVNULL, cwd=cwd, text=True)
        except OSError as error:
            shutil.rmtree(self.directory, ignore_errors=True)
            raise ServeError("cannot start %s: %s" % (program, error)) from error
        self.pid = self.process.pid
        try:
            self.ready_line = self._wait_until_listening(ready_timeout)
        except ServeError:
            self._kill()
            raise

    def _wait_until_listening(self, timeout):
        # serve prints one line on standard output once it listens; nothing before that.
        with selectors.DefaultSelector() as selector:
            selector.register(self.process.stdout, selectors.EVENT_READ)
            if not selector.select(timeout):
                raise ServeError("qvdiag serve did not listen within %g s" % timeout)
        line = self.process.stdout.readline()
        if line.startswith("qvdiag serve: listening on " + self.address + " "):
            return line.rstrip("\n")
        code = self.process.wait(timeout=30)
        raise ServeError("qvdiag serve exited with code %s before listening: %s"
                         % (code, self._read_stderr().strip() or line.strip()))

    def _read_stderr(self):
        try:
            with open(self._stderr_path) as f:
                return f.read()
        except OSError:
            return ""

    def _kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.communicate()
        self.returncode = self.process.returncode
        self.stderr = self._read_stderr()
        shutil.rmtree(self.directory, ignore_errors=True)

    def connect(self, timeout=60.0):
        """A Client of this server."""
        return Client(self.address, timeout=timeout)

    @property
    def running(self):
        return self.process.poll() is None

    def stop(self, timeout=30.0):
        """Stops the server with SIGTERM: it finishes the requests that are running, removes its
        socket and exits. Raises ServeError when it does not exit 0 within `timeout` seconds
        (it is killed then). Stopping a stopped server does nothing."""
        if self.returncode is not None:
            return
        if self.process.poll() is None:
            self.process.send_signal(signal.SIGTERM)
        deadline = time.monotonic() + timeout
        try:
            self.process.communicate(timeout=max(0.0, deadline - time.monotonic()))
        except subprocess.TimeoutExpired:
            self._kill()
            raise ServeError("qvdiag serve did not stop within %g s after SIGTERM and was "
                             "killed" % timeout) from None
        self.returncode = self.process.returncode
        self.stderr = self._read_stderr()
        shutil.rmtree(self.directory, ignore_errors=True)
        if self.returncode != 0:
            raise ServeError("qvdiag serve exited with code %d: %s"
                             % (self.returncode, self.stderr.strip()))

    def __enter__(self):
        return self

    def __exit__(self, exc_type, exc, traceback):
        try:
            self.stop()
        except ServeError:
            # An error of the body is the one to see; a failed stop only when there is none.
            if exc_type is None:
                raise

    def __repr__(self):
        return "qvdiag.Server(%r, pid=%d)" % (self.address, self.pid)


def serve(executable=None, platform_path=(), timestamp=None, log=None, log_level=None,
          library=None, cwd=None, ready_timeout=30.0):
    """Starts `qvdiag serve` on a Unix socket in a private directory and returns the Server
    once it listens; use it in a `with` statement to stop it at the end.

    `platform_path` is a directory or a list of them (--platform-path), `timestamp` the time
    stamp of its reports (--timestamp), `log` and `log_level` its trace (--log, --log-level),
    `library` the libqv_system_diagram.so to load (--library), and `cwd` its working directory,
    against which the paths in requests are read. `executable` is found by find_executable().
    Raises ServeError when it cannot start or does not listen within `ready_timeout` seconds.
    """
    return Server(executable=executable, platform_path=platform_path, timestamp=timestamp,
                  log=log, log_level=log_level, library=library, cwd=cwd,
                  ready_timeout=ready_timeout)
