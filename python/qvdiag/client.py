"""The client of the compile server: sessions, and one method per request of the diagram
service on each session."""
import inspect
from collections.abc import Mapping
from typing import List

import grpc
from google.protobuf import json_format, symbol_database
from google.protobuf.descriptor import FieldDescriptor
from google.protobuf.message import Message

from . import _protocol
from ._protocol import dispatch_pb2, snake_case
from .errors import (CallFailed, InvalidSession, NoSuchSession, ProtocolError, RequestFailed,
                     ServerUnavailable, SessionExists)

_REFUSALS = {
    grpc.StatusCode.ALREADY_EXISTS: SessionExists,
    grpc.StatusCode.NOT_FOUND: NoSuchSession,
    grpc.StatusCode.INVALID_ARGUMENT: InvalidSession,
    grpc.StatusCode.UNAVAILABLE: ServerUnavailable,
}

_METHODS = (
    ("CreateSession", dispatch_pb2.Session, dispatch_pb2.Session),
    ("ForkSession", dispatch_pb2.ForkSessionRequest, dispatch_pb2.Session),
    ("RemoveSession", dispatch_pb2.Session, dispatch_pb2.StatusResponse),
    ("Dispatch", dispatch_pb2.Request, dispatch_pb2.Response),
)


class Client:
    """A connection to a compile server (`qvdiag serve`).

    `target` is a gRPC address: "unix:/path/to/socket" or "127.0.0.1:9000". `timeout` is the
    longest wait, in seconds, for each call; None waits as long as a call takes (an import of a
    large design may take minutes). Use it as a context manager, or call close().
    """

    def __init__(self, target, timeout=60.0):
        self.target = target
        self.timeout = timeout
        self._channel = grpc.insecure_channel(target)
        self._calls = {}
        for method, request, reply in _METHODS:
            self._calls[method] = self._channel.unary_unary(
                "/dispatch.CompileServer/" + method,
                request_serializer=request.SerializeToString,
                response_deserializer=reply.FromString)

    def __enter__(self):
        return self

    def __exit__(self, *exc):
        self.close()

    def __repr__(self):
        return "qvdiag.Client(%r)" % self.target

    def close(self):
        """Closes the connection; sessions stay on the server."""
        self._channel.close()

    def call(self, method, request):
        """Makes one call of dispatch.CompileServer ("CreateSession", "ForkSession",
        "RemoveSession" or "Dispatch") with a ready message and returns the server's message.
        A gRPC failure raises CallFailed, or the subclass for its code."""
        try:
            return self._calls[method](request, timeout=self.timeout)
        except grpc.RpcError as error:
            code, details = error.code(), error.details()
        raise _REFUSALS.get(code, CallFailed)(method, code, details)

    def create_session(self, uuid=None, name=""):
        """Creates a session and returns it. Without `uuid` the server picks a fresh one.
        Raises SessionExists when the UUID is in use."""
        created = self.call("CreateSession", dispatch_pb2.Session(uuid=uuid or "", name=name))
        return Session(self, created.uuid, created.name)

    def fork(self, source, uuid=None, name=""):
        """Creates a session with a copy of the diagram of `source` (a Session or a UUID) and
        returns it. Raises NoSuchSession for an unknown source, InvalidSession for an empty
        one, SessionExists when `uuid` is in use."""
        request = dispatch_pb2.ForkSessionRequest(
            source_uuid=_uuid_of(source), target=dispatch_pb2.Session(uuid=uuid or "", name=name))
        forked = self.call("ForkSession", request)
        return Session(self, forked.uuid, forked.name)

    def remove(self, session):
        """Removes the session (a Session or a UUID) and its diagram. Raises NoSuchSession when
        the server does not have it."""
        self.call("RemoveSession", dispatch_pb2.Session(uuid=_uuid_of(session)))

    def session(self, uuid, name=""):
        """A Session object for a session that already exists on the server (nothing is
        sent)."""
        return Session(self, uuid, name)


def _uuid_of(session):
    return session.uuid if isinstance(session, Session) else str(session)


class Session:
    """A session of the compile server, holding one diagram.

    Each request type of the diagram service is a method named after it in snake_case
    (MakeInitialSystemDiagram: make_initial_system_diagram), whose keyword arguments are the
    message's fields in snake_case (rtdFile: rtd_file). A message field takes a dict, with keys
    spelled as in the .proto file, in lowerCamelCase or in snake_case, or a ready message.
    A method returns the answer's payload (a protobuf message) when there is one, else None;
    a status other than 200 raises RequestFailed.
    """

    def __init__(self, client, uuid, name=""):
        self.client = client
        self.uuid = uuid
        self.name = name

    def __repr__(self):
        return "qvdiag.Session(uuid=%r, name=%r)" % (self.uuid, self.name)

    def fork(self, uuid=None, name=""):
        """A new session with a copy of this one's diagram (Client.fork)."""
        return self.client.fork(self, uuid=uuid, name=name)

    def remove(self):
        """Removes this session from the server (Client.remove)."""
        self.client.remove(self)

    def send(self, message):
        """Sends any message as a request of the diagram service for this session, with the
        protocol's version, and returns the answer's payload (None when there is none).
        Raises RequestFailed when the status is not 200, ProtocolError when the answer has no
        status (the service does not serve the message's type)."""
        major, minor, patch = _protocol.protocol_version()
        request = dispatch_pb2.Request(
            service=_protocol.SERVICE, session_uuid=self.uuid,
            version=dispatch_pb2.Version(major=major, minor=minor, patch=patch))
        request.payload.Pack(message)
        response = self.client.call("Dispatch", request)
        request_type = message.DESCRIPTOR.name
        if not response.HasField("status"):
            raise ProtocolError("the service answered %s without a status: it does not serve "
                                "that type" % message.DESCRIPTOR.full_name)
        if response.status.code != 200:
            raise RequestFailed(request_type, response.status.code, response.status.message,
                                self.uuid)
        if not response.HasField("payload"):
            return None
        return _unpack(response.payload)

    def call(self, request_type, payload=None):
        """Sends the request `request_type` ("UpsertKernel") with `payload`, a dict in the
        request's JSON form (as `qvdiag call --json` and the request files of `qvdiag build`
        take it: {"kernel": {"name": "vadd"}}). Returns as the request's method does."""
        if request_type not in _protocol.REQUEST_TYPES:
            raise ValueError("%r is not a request type of the diagram service; the types are: %s"
                             % (request_type, ", ".join(_protocol.REQUEST_TYPES)))
        message = _build(_protocol.request_descriptor(request_type),
                         _protocol.request_class(request_type), payload or {}, request_type)
        return self.send(message)


def _unpack(any_payload):
    full_name = any_payload.TypeName()
    try:
        message = symbol_database.Default().GetSymbol(full_name)()
    except KeyError:
        raise ProtocolError("the answer's payload has the type %s, which this package does not "
                            "know" % full_name) from None
    any_payload.Unpack(message)
    return message


def _field_named(descriptor, key):
    """The field of `descriptor` that `key` names: its name in the .proto file, its JSON
    (lowerCamelCase) name or its snake_case form."""
    field = descriptor.fields_by_name.get(key)
    if field is not None:
        return field
    for field in descriptor.fields:
        if key in (field.json_name, snake_case(field.name)):
            return field
    return None


def _declared_names(descriptor, value, where):
    """`value` (a dict in any of the spellings, or a message of the type) as a dict keyed by
    the fields' declared names, at every level, for json_format.ParseDict."""
    if isinstance(value, Message):
        if value.DESCRIPTOR.full_name != descriptor.full_name:
            raise TypeError("%s: expected a %s message or a dict, not a %s message"
                            % (where, descriptor.full_name, value.DESCRIPTOR.full_name))
        return json_format.MessageToDict(value, preserving_proto_field_name=True)
    if not isinstance(value, Mapping):
        raise TypeError("%s: expected a dict or a %s message, not %s"
                        % (where, descriptor.full_name, type(value).__name__))
    declared = {}
    for key, item in value.items():
        field = _field_named(descriptor, key)
        if field is None:
            raise ValueError("%s: %s has no field %r (its fields: %s)"
                             % (where, descriptor.name, key,
                                ", ".join(snake_case(f.name) for f in descriptor.fields)))
        if field.name in declared:
            raise ValueError("%s: the field %s is given twice" % (where, field.name))
        path = where + "." + snake_case(field.name)
        if field.message_type is not None and item is not None:
            if field.label == FieldDescriptor.LABEL_REPEATED:
                if isinstance(item, (str, bytes, Mapping)) or not hasattr(item, "__iter__"):
                    raise TypeError("%s: expected a list, not %s" % (path, type(item).__name__))
                item = [_declared_names(field.message_type, entry, "%s[%d]" % (path, i))
                        for i, entry in enumerate(item)]
            else:
                item = _declared_names(field.message_type, item, path)
        declared[field.name] = item
    return declared


def _build(descriptor, message_class, fields, where):
    declared = _declared_names(descriptor, fields, where)
    try:
        return json_format.ParseDict(declared, message_class(), ignore_unknown_fields=False)
    except json_format.ParseError as error:
        raise ValueError("%s: %s" % (where, error)) from None


# --- One method per request type ---------------------------------------------------------------

_SCALAR_TYPES = {
    FieldDescriptor.CPPTYPE_STRING: str, FieldDescriptor.CPPTYPE_BOOL: bool,
    FieldDescriptor.CPPTYPE_INT32: int, FieldDescriptor.CPPTYPE_INT64: int,
    FieldDescriptor.CPPTYPE_UINT32: int, FieldDescriptor.CPPTYPE_UINT64: int,
    FieldDescriptor.CPPTYPE_DOUBLE: float, FieldDescriptor.CPPTYPE_FLOAT: float,
    FieldDescriptor.CPPTYPE_ENUM: str,
}


def _python_type(field):
    single = dict if field.message_type is not None else _SCALAR_TYPES[field.cpp_type]
    return List[single] if field.label == FieldDescriptor.LABEL_REPEATED else single


def _type_words(field):
    if field.message_type is not None:
        single = "dict or %s" % field.message_type.full_name
    elif field.enum_type is not None:
        single = "str, a name of %s" % field.enum_type.full_name
    else:
        single = _SCALAR_TYPES[field.cpp_type].__name__
    return ("list of " + single) if field.label == FieldDescriptor.LABEL_REPEATED else single


def _request_method(request_type):
    descriptor = _protocol.request_descriptor(request_type)
    message_class = _protocol.request_class(request_type)
    method_name = snake_case(request_type)
    by_python_name = {snake_case(field.name): field for field in descriptor.fields}
    names = list(by_python_name)
    # A request of one field takes it by position too: session.write_flow_report(path).
    positional = names if len(names) == 1 else []
    kind = (inspect.Parameter.POSITIONAL_OR_KEYWORD if positional
            else inspect.Parameter.KEYWORD_ONLY)

    def method(self, *args, **kwargs):
        if len(args) > len(positional):
            raise TypeError("%s() takes %d positional argument%s; give the fields by keyword"
                            % (method_name, len(positional), "" if positional else "s"))
        values = dict(zip(positional, args))
        for key, value in kwargs.items():
            if key not in by_python_name:
                hint = ""
                field = _field_named(descriptor, key)
                if field is not None:
                    hint = " (the fields are named in snake_case: %s)" % snake_case(field.name)
                raise TypeError("%s() got an unexpected keyword argument %r%s"
                                % (method_name, key, hint))
            if key in values:
                raise TypeError("%s() got multiple values for argument %r" % (method_name, key))
            values[key] = value
        fields = {by_python_name[key].name: value for key, value in values.items()
                  if value is not None}
        return self.send(_build(descriptor, message_class, fields, method_name + "()"))

    lines = [_protocol.SUMMARIES[request_type], "",
             "Sends %s for this session." % descriptor.full_name]
    if names:
        lines += ["", "Fields (argument: field of the message; one left out or None is not "
                      "sent):"]
        lines += ["    %s (%s): %s" % (name, _type_words(field), field.name)
                  for name, field in by_python_name.items()]
    else:
        lines += ["", "The message has no fields."]
    lines += ["", "Returns the answer's payload, a protobuf message, when it carries one, "
                  "else None.", "Raises RequestFailed when the answer's status is not 200."]
    method.__name__ = method_name
    method.__qualname__ = "Session." + method_name
    method.__doc__ = "\n".join(lines)
    method.__signature__ = inspect.Signature(
        [inspect.Parameter("self", inspect.Parameter.POSITIONAL_OR_KEYWORD)]
        + [inspect.Parameter(name, kind, default=None, annotation=_python_type(field))
           for name, field in by_python_name.items()])
    return method


for _type in _protocol.REQUEST_TYPES:
    setattr(Session, snake_case(_type), _request_method(_type))
del _type
