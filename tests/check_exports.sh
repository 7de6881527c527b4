#!/usr/bin/env bash
# The library's dynamic symbol table: the factory, the Log settings, the session table's
# exception classes, the tree dump IPA::RtdTestVisitor and, for callers that read an actual
# resources document, IPA::ActualResourcesTree, its visitors and the one member
# IPA::ActualResourceCollection::states are exported, and so is the hardware repository (qd::,
# with the two by-index interface attribute readers that qvdiag repo --query offers);
# the library's other own classes are not.
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
expect "IPA::ActualResourcesTree::ActualResourcesTree(std::istream&)"
expect "IPA::ActualResourcesTree::propertyTree"
expect "typeinfo for IPA::ActualResourceTreeVisitor"
expect "typeinfo for IPA::ActualResourcesSchemaValidationVisitor"
expect "IPA::ActualResourcesSchemaValidationVisitor::visit(IPA::ActualResourcesTree&)"
expect "typeinfo for IPA::ActualResourcesComputeUnitVisitor"
expect "IPA::ActualResourcesComputeUnitVisitor::ActualResourcesComputeUnitVisitor("
expect "IPA::ActualResourcesComputeUnitVisitor::visit(IPA::ActualResourcesTree&)"
expect "IPA::ActualResourceCollection::states"
expect "qd::QDXPathDoc::buildDoc("
expect "qd::QDXPathDoc::stringQuery("
expect "qd::file_exists("
expect "qd::getFileName("
expect "qd::Component::Component("
expect "qd::AxiBusIntf::AxiBusIntf("
expect "qd::str2port_t("
expect "qd::QDSRepo::QDSRepo("
expect "qd::QDSRepo::checkDatabase("
expect "qd::QDSRepo::createRepo("
expect "qd::QDSRepo::toString("
expect "qd::getQdCompBusInterfaceStringAttrByIndex("
expect "qd::getQdCompBusInterfaceIntAttrByIndex("
exported='RtdTestVisitor|ActualResourcesTree|ActualResourceTreeVisitor'
exported+='|ActualResourcesSchemaValidationVisitor|ActualResourcesComputeUnitVisitor'
if grep -E ' [TW] IPA::' <<<"$symbols" |
  grep -vE " [TW] IPA::($exported)::| [TW] IPA::ActualResourceCollection::states[[(]"; then
  echo "the library's internals are exported (above)"; fail=1
fi
exit $fail
