"""Stored diagrams (the JSON that WriteSystemDiagram writes) as Python objects with tables."""
import dataclasses
from typing import Optional, Tuple

from google.protobuf import json_format

from ._protocol import system_diagram_pb2
from .errors import DiagramError

# The words of the resource reports for each design state, in the order of an implementation
# run; the stored diagram keeps the enumeration's names.
DESIGN_STATES = {
    "DESIGN_STATE_SYNTHESIZED": "Synthesized",
    "DESIGN_STATE_FULLY_PLACED": "Fully Placed",
    "DESIGN_STATE_ROUTED": "Routed",
}


def _enum_word(enum, value):
    # The JSON form may give an enumeration a number it has no name for; the stored diagram then
    # holds that number, and so does the table, as text.
    try:
        return enum.Name(value)
    except ValueError:
        return str(value)


def load_diagram(path):
    """Reads a stored diagram file and returns it as a Diagram.

    The file is read as the service reads it: the protobuf JSON form of outerContainer, keys as
    declared or in lowerCamelCase, no unknown key, enumerations by their names. Raises
    DiagramError naming the file and the reason when it cannot be read or is not a diagram.
    """
    path = str(path)
    try:
        with open(path, encoding="utf-8") as f:
            text = f.read()
    except (OSError, UnicodeDecodeError) as error:
        raise DiagramError(path, "cannot read the diagram: %s" % error) from None
    container = system_diagram_pb2.outerContainer()
    try:
        json_format.Parse(text, container, ignore_unknown_fields=False)
    except json_format.ParseError as error:
        raise DiagramError(path, "not a stored diagram: %s" % error) from None
    except (TypeError, ValueError, OverflowError, AttributeError) as error:
        # protobuf's JSON reader lets some wrong shapes through as plain Python errors: a number
        # where an object belongs ("'int' object is not iterable"), 1e999 for an integer.
        raise DiagramError(path, "not a stored diagram: %s" % error) from None
    except RecursionError:
        raise DiagramError(path, "not a stored diagram: nested too deeply") from None
    # An array or a plain value reads as no field at all; the service refuses it, and so do we.
    if not text.lstrip().startswith("{"):
        raise DiagramError(path, "not a stored diagram: it is no JSON object")
    return Diagram(container, path)


class View(tuple):
    """The rows of one table of a diagram: a tuple of records (dataclasses), which
    to_dataframe() turns into a pandas DataFrame with one column per field."""

    def __new__(cls, record_type, rows):
        view = super().__new__(cls, rows)
        view.record_type = record_type
        return view

    def to_dataframe(self):
        try:
            import pandas
        except ImportError:
            raise ImportError("to_dataframe() needs pandas (Debian: python3-pandas; "
                              "pip install 'qvdiag[pandas]')") from None
        columns = [field.name for field in dataclasses.fields(self.record_type)]
        return pandas.DataFrame([dataclasses.astuple(row) for row in self], columns=columns)


@dataclasses.dataclass(frozen=True)
class Memory:
    """One memory of the platform (qsa.device_topology), with its position there."""
    index: int
    tag: str
    type: str
    used: bool
    size_kb: Optional[int]
    base_address: str
    slr: str
    sp_tag: str
    id: str


@dataclasses.dataclass(frozen=True)
class Clock:
    """One clock of the platform (qsa.clocks); -1 means the platform gave none."""
    name: str
    id: int
    frequency: float
    period: float
    requested_frequency: float
    achieved_frequency: float
    status: str
    orig_name: str


@dataclasses.dataclass(frozen=True)
class Kernel:
    """One kernel of a user region with its synthesis estimate (None where not given)."""
    region: str
    name: str
    clocks: Tuple[str, ...]
    ports: Tuple[str, ...]
    arguments: Tuple[str, ...]
    lut: Optional[int]
    reg: Optional[int]
    bram: Optional[int]
    uram: Optional[int]
    dsp: Optional[int]


@dataclasses.dataclass(frozen=True)
class ComputeUnit:
    """One compute unit of a user region."""
    region: str
    name: str
    kernel: str
    id: str
    base_address: str
    clocks: Tuple[str, ...]
    reset_pins: Tuple[str, ...]
    slrs: Tuple[str, ...]


@dataclasses.dataclass(frozen=True)
class Connection:
    """One connection of a user region, its two ends side by side."""
    region: str
    id: str
    source_type: str
    source_id: str
    source_instance: str
    source_arg_name: str
    source_pin: str
    destination_type: str
    destination_id: str
    destination_instance: str
    destination_arg_name: str
    destination_pin: str


@dataclasses.dataclass(frozen=True)
class ResourceUse:
    """What one compute unit uses in one design state (its actual_resources entry)."""
    compute_unit: str
    kernel: str
    state: str
    lut: Optional[int]
    reg: Optional[int]
    bram: Optional[int]
    uram: Optional[int]
    dsp: Optional[int]


class Diagram:
    """A stored diagram. `message` is the whole outerContainer message; the properties are
    tables over it, each a View of records in the diagram's order."""

    def __init__(self, message, path=None):
        self.message = message
        self.path = path

    def __repr__(self):
        return "qvdiag.Diagram(%r)" % self.path

    def _picture(self, format):  # noqa: A002 - the CLI's word
        # A notebook asks every object for its pictures; one that has none (a diagram made in
        # memory, or no qvdiag program to draw it) shows as its repr instead.
        if self.path is None:
            return None
        from .commands import render
        from .errors import ServeError
        try:
            return render(self.path, format)
        except ServeError:
            return None

    def _repr_svg_(self):
        """The picture, for notebooks: `qvdiag render PATH --format svg`."""
        return self._picture("svg")

    def _repr_html_(self):
        """The viewer (pan, zoom, search, a panel per compute unit), for notebooks:
        `qvdiag render PATH --format html`."""
        return self._picture("html")

    def _count(self, text, where):
        # Counts are stored as text; empty means "not given".
        if text == "":
            return None
        if not text.isdigit() or not text.isascii():
            raise DiagramError(self.path, "%s: %r is not a count" % (where, text))
        return int(text)

    @property
    def _root(self):
        return self.message.system_diagram_metadata

    @property
    def schema_version(self):
        version = self._root.schema_version
        return "%s.%s.%s" % (version.major, version.minor, version.patch)

    @property
    def platform(self):
        """The platform's name: the delivered platform's, else the build's record of it."""
        return self._root.qsa.name or self._root.qrxbin.platform.name

    @property
    def label(self):
        """The build's label (qrxbin.generated_by.label)."""
        return self._root.qrxbin.generated_by.label

    @property
    def memories(self):
        rows = []
        for index, memory in enumerate(self._root.qsa.device_topology):
            where = "qsa.device_topology[%d].size_kb" % index
            rows.append(Memory(
                index=index, tag=memory.tag,
                type=_enum_word(system_diagram_pb2.MemoryType, memory.type), used=memory.used == "yes",
                size_kb=self._count(memory.size_kb, where), base_address=memory.base_address,
                slr=memory.slr, sp_tag=memory.sp_tag, id=memory.id))
        return View(Memory, rows)

    @property
    def clocks(self):
        return View(Clock, [
            Clock(name=clock.name, id=clock.id, frequency=clock.frequency, period=clock.period,
                  requested_frequency=clock.requested_frequency,
                  achieved_frequency=clock.achieved_frequency,
                  status=_enum_word(system_diagram_pb2.ClockStatus, clock.status),
                  orig_name=clock.orig_name)
            for clock in self._root.qsa.clocks])

    def _regions(self):
        for r, region in enumerate(self._root.qrxbin.user_regions):
            yield "qrxbin.user_regions[%d]" % r, region

    @property
    def kernels(self):
        rows = []
        for where, region in self._regions():
            for k, kernel in enumerate(region.kernels):
                estimate = kernel.estimated_resources
                at = "%s.kernels[%d].estimated_resources." % (where, k)
                rows.append(Kernel(
                    region=region.name, name=kernel.name,
                    clocks=tuple(clock.name for clock in kernel.clock_refs),
                    ports=tuple(port.name for port in kernel.ports),
                    arguments=tuple(argument.name for argument in kernel.arguments),
                    **{kind: self._count(getattr(estimate, kind), at + kind)
                       for kind in ("lut", "reg", "bram", "uram", "dsp")}))
        return View(Kernel, rows)

    @property
    def compute_units(self):
        return View(ComputeUnit, [
            ComputeUnit(region=region.name, name=unit.name, kernel=unit.kernel_name, id=unit.id,
                        base_address=unit.base_address,
                        clocks=tuple(clock.name for clock in unit.clock_refs),
                        reset_pins=tuple(unit.reset_pins),
                        slrs=tuple(use.slr for use in unit.slr_resources))
            for _, region in self._regions() for unit in region.compute_units])

    @property
    def connections(self):
        rows = []
        for _, region in self._regions():
            for connection in region.connectivity:
                source, destination = connection.source, connection.destination
                rows.append(Connection(
                    region=region.name, id=connection.id,
                    source_type=source.type, source_id=source.id,
                    source_instance=source.instance, source_arg_name=source.arg_name,
                    source_pin=source.pin,
                    destination_type=destination.type, destination_id=destination.id,
                    destination_instance=destination.instance,
                    destination_arg_name=destination.arg_name, destination_pin=destination.pin))
        return View(Connection, rows)

    @property
    def resources(self):
        """Resource use per compute unit and design state: one row per actual_resources entry,
        `state` in the words of the resource reports ("Synthesized", "Fully Placed",
        "Routed"; "" where the entry names no state)."""
        rows = []
        for where, region in self._regions():
            for u, unit in enumerate(region.compute_units):
                for e, entry in enumerate(unit.actual_resources):
                    at = "%s.compute_units[%d].actual_resources[%d]." % (where, u, e)
                    state = _enum_word(system_diagram_pb2.DesignState, entry.design_state)
                    rows.append(ResourceUse(
                        compute_unit=unit.name, kernel=unit.kernel_name,
                        state=DESIGN_STATES.get(state, ""),
                        **{kind: self._count(getattr(entry, kind), at + kind)
                           for kind in ("lut", "reg", "bram", "uram", "dsp")}))
        return View(ResourceUse, rows)

    def resources_in(self, state):
        """The rows of `resources` for one design state ("Routed")."""
        if state not in DESIGN_STATES.values():
            raise ValueError("%r is not a design state; the states are: %s"
                             % (state, ", ".join(DESIGN_STATES.values())))
        return View(ResourceUse, [row for row in self.resources if row.state == state])

    @property
    def states_reported(self):
        """The design states some compute unit has resources for, in the order of a run."""
        seen = {row.state for row in self.resources}
        return [word for word in DESIGN_STATES.values() if word in seen]
