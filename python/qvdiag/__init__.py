"""qvdiag: drive the qv_system_diagram compile server and read its stored diagrams.

    import qvdiag
    with qvdiag.serve(platform_path="examples/platforms") as server:
        session = server.connect().create_session(name="demo")
        session.make_initial_system_diagram(rtd_file=..., platform=..., ...)
        session.write_system_diagram(path="/tmp/diagram.json")
    diagram = qvdiag.load_diagram("/tmp/diagram.json")

See docs/python.md in the repository.
"""
from .client import Client, Session
from .commands import diff, render, report
from .diagram import (ComputeUnit, Connection, Clock, Diagram, Kernel, Memory, ResourceUse, View,
                      load_diagram)
from .errors import (CallFailed, CommandFailed, DiagramError, InvalidSession, NoSuchSession, ProtocolError,
                     QvdiagError, RequestFailed, ServeError, ServerUnavailable, SessionExists)
from .server import Server, find_executable, serve
from ._protocol import REQUEST_TYPES

__version__ = "0.1.0"

__all__ = [
    "Client", "Session", "Server", "serve", "find_executable", "load_diagram", "Diagram", "View",
    "render", "diff", "report", "CommandFailed",
    "Memory", "Clock", "Kernel", "ComputeUnit", "Connection", "ResourceUse", "REQUEST_TYPES",
    "QvdiagError", "RequestFailed", "ProtocolError", "CallFailed", "SessionExists",
    "NoSuchSession", "InvalidSession", "ServerUnavailable", "ServeError", "DiagramError",
]
