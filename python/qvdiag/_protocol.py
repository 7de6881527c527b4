"""The protocol as the package sees it: the generated messages, the service's name and version,
and the sixteen request types with their Python names."""
import re

try:
    from ._proto import dispatch_pb2, system_diagram_pb2, system_diagram_server_pb2
except ImportError as error:  # pragma: no cover - a source tree that was never built
    raise ImportError(
        "qvdiag's protocol modules are generated at build time and are missing here (%s); "
        "import the package from the build tree (build/python) or install it with "
        "pip install ./python" % error) from error

SERVICE = "dispatch.system_diagram_server"

# The request types of the service, in the order it tests a payload's type (docs/protocol.md).
# The other messages of system_diagram_server.proto are parts of these, or Version, which only
# carries the file option.
REQUEST_TYPES = (
    "UtilizationDuringBrenloRun",
    "AfterRunningBrenlo",
    "MakeInitialSystemDiagram",
    "ReadSystemDiagram",
    "WriteSystemDiagram",
    "UpsertKernelUse",
    "UpsertKernel",
    "UpsertQrxBin",
    "UpsertQrxBinGeneratedBy",
    "UpsertQsaClock",
    "GetQrxBinGeneratedBy",
    "UpdateSystemDiagramAfterBrenloRuns",
    "UpdateComputeUnit",
    "UpsertConnectivity",
    "WriteFlowReport",
    "UpsertPlatform",
)

# One line on what each request does, for the methods' docstrings.
SUMMARIES = {
    "UtilizationDuringBrenloRun": "Merges the resource reports read from files.",
    "AfterRunningBrenlo": "Updates a stored diagram file into another from an rtd file.",
    "MakeInitialSystemDiagram": "Builds the session's diagram from an rtd file and a platform.",
    "ReadSystemDiagram": "Replaces the session's diagram from a stored diagram file.",
    "WriteSystemDiagram": "Writes the session's diagram as JSON.",
    "UpsertKernelUse": "Merges a resource report given in the request.",
    "UpsertKernel": "Merges a kernel.",
    "UpsertQrxBin": "Merges the build section.",
    "UpsertQrxBinGeneratedBy": "Merges the build's generator.",
    "UpsertQsaClock": "Merges a platform clock.",
    "GetQrxBinGeneratedBy": "Answers the build's generator (a qrxBinGeneratedBy message).",
    "UpdateSystemDiagramAfterBrenloRuns": "Updates the session's diagram from an rtd file "
                                          "written after implementation.",
    "UpdateComputeUnit": "Merges a compute unit.",
    "UpsertConnectivity": "Merges a connection.",
    "WriteFlowReport": "Writes the text flow report.",
    "UpsertPlatform": "Merges the build's platform record.",
}


def snake_case(name):
    """The Python spelling of a message or field name: MakeInitialSystemDiagram ->
    make_initial_system_diagram, rtdFile -> rtd_file, generatedDetailA -> generated_detail_a,
    qrxBin -> qrx_bin. A name already in snake_case stays as it is."""
    words = re.sub(r"([a-z0-9])([A-Z])", r"\1_\2", name)
    words = re.sub(r"([A-Z])([A-Z][a-z])", r"\1_\2", words)
    return words.lower()


def request_descriptor(type_name):
    """The descriptor of the request type `type_name` ("WriteFlowReport")."""
    return system_diagram_server_pb2.DESCRIPTOR.message_types_by_name[type_name]


def request_class(type_name):
    return getattr(system_diagram_server_pb2, type_name)


def protocol_version():
    """The protocol's version (major, minor, patch), read from the file option file_version of
    system_diagram_server.proto as the service reads it."""
    options = system_diagram_server_pb2.DESCRIPTOR.GetOptions()
    text = options.Extensions[system_diagram_server_pb2.file_version]
    major, minor, patch = (int(part) for part in text.split("."))
    return major, minor, patch
