"""The exceptions of the package. Everything it raises on purpose derives from QvdiagError."""


class QvdiagError(Exception):
    """Base of every error the package raises on purpose."""


class RequestFailed(QvdiagError):
    """The diagram service answered a request with a status other than 200.

    `code` is the status code (400, 404 or 500), `text` its text ("Bad Request", ...),
    `request_type` the request's message name ("MakeInitialSystemDiagram") and `session` the
    UUID it was sent for. The reason of a 500 is in the server's trace, never in the answer.
    """

    def __init__(self, request_type, code, text, session):
        super().__init__("%s was answered %d %s" % (request_type, code, text))
        self.request_type = request_type
        self.code = code
        self.text = text
        self.session = session


class ProtocolError(QvdiagError):
    """The server's answer is not one the protocol allows for the request sent, e.g. no status
    at all, which is how the service answers a payload type it does not serve."""


class CallFailed(QvdiagError):
    """A call of the compile server failed at the gRPC level: the server refused it or could not
    be reached. `method` is the call ("CreateSession", "Dispatch", ...), `grpc_code` the
    grpc.StatusCode and `details` the server's text."""

    def __init__(self, method, grpc_code, details):
        super().__init__("%s failed with %s: %s" % (method, grpc_code.name, details))
        self.method = method
        self.grpc_code = grpc_code
        self.details = details


class SessionExists(CallFailed):
    """CreateSession or ForkSession named a UUID that is in use (gRPC ALREADY_EXISTS)."""


class NoSuchSession(CallFailed):
    """ForkSession or RemoveSession named a session the server does not have (NOT_FOUND)."""


class InvalidSession(CallFailed):
    """The server refused a session argument as invalid, e.g. an empty UUID to fork from
    (INVALID_ARGUMENT)."""


class ServerUnavailable(CallFailed):
    """Nothing answers at the address, or the server went away (UNAVAILABLE)."""


class ServeError(QvdiagError):
    """The qvdiag program could not be found or started, or qvdiag serve did not stop
    cleanly."""


class CommandFailed(QvdiagError):
    """A run of the qvdiag program (render, diff, report) failed. `command` is the argument
    list, `exit_code` its exit code (1 the work failed, 2 bad usage or unreadable input) and
    `stderr` what it said, which names the file and the reason."""

    def __init__(self, command, exit_code, stderr):
        super().__init__("%s exited %d: %s" % (" ".join(command[1:3]), exit_code,
                                                stderr.strip()))
        self.command = command
        self.exit_code = exit_code
        self.stderr = stderr


class DiagramError(QvdiagError):
    """A stored diagram could not be read. `path` names the file, `reason` says why."""

    def __init__(self, path, reason):
        super().__init__("%s: %s" % (path, reason))
        self.path = path
        self.reason = reason
