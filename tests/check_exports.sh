#!/usr/bin/env bash
# The library's dynamic symbol table: the factory, the Log settings, the session table's
# exception classes and the tree dump IPA::RtdTestVisitor are exported; the library's other own
# classes are not.
set -euo pipefail
lib="$1"
symbols=$(nm -DC --defined-only "$lib")
fail=0
expect() {
  if ! grep -qF -- "$1" <<<"$symbols"; then echo "missing export: $1"; fail=1; fi
}
expect " T makeHandler"
expect "typeinfo for dispatch::server::HCSExceptionUuidAlreadyInUse"
expect "typeinfo for dispatch::server::HCSExceptionNoSessionFound"
expect "Log::reportingLevel"
expect "Log::subsystemID"
expect "Log::subsystemName"
expect "typeinfo for IPA::RtdTestVisitor"
if grep -E ' [TW] IPA::' <<<"$symbols" | grep -vE ' [TW] IPA::RtdTestVisitor::'; then
  echo "the library's internals are exported (above)"; fail=1
fi
exit $fail
