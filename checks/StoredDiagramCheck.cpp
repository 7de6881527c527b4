#include "checks/StoredDiagramCheck.h"

#include <google/protobuf/descriptor.h>
#include <google/protobuf/util/json_util.h>

#include <optional>
#include <utility>
#include <vector>

#include "checks/JsonDocument.h"
#include "checks/JsonFile.h"
#include "checks/NearestKey.h"
#include "proto/system_diagram.pb.h"

namespace qvcheck {

namespace {

using google::protobuf::Descriptor;
using google::protobuf::FieldDescriptor;

class Checker {
 public:
  Checker(std::string path, CheckReport& report) : path_(std::move(path)), report_(report) {}

  std::size_t errors() const { return errors_; }

  // The members of `object`, a message of type `type` at `path`.
  void message(JsonValue const& object, Descriptor const* type, std::string const& path) {
    if (object.kind != JsonValue::Kind::kObject) return;  // the reader's own reason says it
    for (JsonMember const& member : object.members) {
      FieldDescriptor const* field = type->FindFieldByName(member.key);
      // The reader also takes a field by its lowerCamelCase JSON name.
      for (int i = 0; field == nullptr && i < type->field_count(); ++i) {
        if (type->field(i)->json_name() == member.key) field = type->field(i);
      }
      if (field == nullptr) {
        std::vector<std::string> names;
        for (int i = 0; i < type->field_count(); ++i) names.push_back(type->field(i)->name());
        add(member.line, member.column, path,
            member.key + " is not a field of " + type->name() + didYouMean(member.key, names),
            "QV-DIAGRAM-UNKNOWN-KEY");
        continue;
      }
      std::string const fieldPath = joinPath(path, member.key);
      if (field->is_repeated()) {
        if (member.value.kind != JsonValue::Kind::kArray) continue;
        for (std::size_t i = 0; i < member.value.members.size(); ++i) {
          value(member.value.members[i].value, field, indexPath(fieldPath, i));
        }
        continue;
      }
      value(member.value, field, fieldPath);
    }
  }

 private:
  void value(JsonValue const& v, FieldDescriptor const* field, std::string const& path) {
    if (field->type() == FieldDescriptor::TYPE_MESSAGE) {
      message(v, field->message_type(), path);
      return;
    }
    if (field->type() != FieldDescriptor::TYPE_ENUM || v.kind != JsonValue::Kind::kString) return;
    if (field->enum_type()->FindValueByName(v.text) != nullptr) return;
    std::vector<std::string> names;
    for (int i = 0; i < field->enum_type()->value_count(); ++i) {
      names.push_back(field->enum_type()->value(i)->name());
    }
    add(v.line, v.column, path,
        "\"" + v.text + "\" is no value of " + field->enum_type()->name() +
            didYouMean(v.text, names),
        "QV-DIAGRAM-ENUM");
  }

  void add(int line, int column, std::string keyPath, std::string text, char const* code) {
    Finding finding;
    finding.severity = Severity::kError;
    finding.file = path_;
    finding.line = line;
    finding.column = column;
    finding.keyPath = std::move(keyPath);
    finding.text = std::move(text);
    finding.effect = "the reader refuses the file";
    finding.code = code;
    report_.add(std::move(finding));
    ++errors_;
  }

  std::string path_;
  CheckReport& report_;
  std::size_t errors_ = 0;
};

}  // namespace

void StoredDiagramCheck::checkFile(std::string const& path, CheckReport& report) {
  report.addFile(path);
  std::string text;
  if (!JsonFile::readOrReport(path, text, Severity::kError, "the reader refuses the file",
                              "QV-DIAGRAM-UNREADABLE", report)) {
    return;
  }
  checkText(path, text, report);
}

void StoredDiagramCheck::checkText(std::string const& path, std::string const& text,
                                   CheckReport& report) {
  std::optional<JsonDocument> const document =
      JsonFile::parse(path, text, "DIAGRAM", "the reader refuses the file", report);
  if (!document) return;
  using Root = ProfileAnalyzerSystemDiagramSerializable::outerContainer;
  Checker checker(path, report);
  checker.message(document->root(), Root::descriptor(), "");
  if (checker.errors() > 0) return;
  // Whatever else protobuf's reader refuses (a number where a text belongs, a list where one
  // value belongs) it says in its own words; the same reader and options as the library's.
  Root root;
  google::protobuf::util::JsonParseOptions options;
  options.ignore_unknown_fields = false;
  options.case_insensitive_enum_parsing = false;
  auto const status = google::protobuf::util::JsonStringToMessage(text, &root, options);
  if (status.ok()) return;
  Finding finding;
  finding.severity = Severity::kError;
  finding.file = path;
  finding.text = "refused: " + std::string(status.message());
  finding.effect = "the reader refuses the file";
  finding.code = "QV-DIAGRAM-REFUSED";
  report.add(std::move(finding));
}

}  // namespace qvcheck
