// The JSON form of ProfileAnalyzerSystemDiagram (docs/formats.md): what a fresh diagram writes,
// that every message and field travels through a write and a read unchanged, and which documents
// the reader refuses. Expected documents are written out in full where they are short enough to
// read; the printer's layout is part of the stored format, since other tools diff these files.
#include "diagram/ProfileAnalyzerSystemDiagram.h"

#include <functional>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>

#include <google/protobuf/descriptor.h>
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>
#include <gtest/gtest.h>
#include "tests/support/Messages.h"
#include "tests/support/Calls.h"

namespace {

using qvtest::parse;
using qvtest::sameMessage;
using qvtest::runtimeErrorText;

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using Container = IPA::ProfileAnalyzerSystemDiagram::Container;
using IPA::ProfileAnalyzerSystemDiagram;

bool startsWith(std::string const& text, std::string const& prefix) {
  return text.compare(0, prefix.size(), prefix) == 0;
}

bool endsWith(std::string const& text, std::string const& suffix) {
  return text.size() >= suffix.size() &&
         text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

// What a diagram that holds nothing writes: the version stamp alone. The protobuf printer ends its
// text with a newline, and the writer adds one of its own.
char const kFreshDocument[] =
    "{\n"
    " \"system_diagram_metadata\": {\n"
    "  \"schema_version\": {\n"
    "   \"major\": \"2\",\n"
    "   \"minor\": \"0\",\n"
    "   \"patch\": \"0\"\n"
    "  }\n"
    " }\n"
    "}\n"
    "\n";

// Every message and every field of the stored schema, each enumeration with all of its values,
// numbers that mean "not given" (-1), fractions, and repeated fields with more than one entry.
// The second entries of several repeated fields leave their strings empty on purpose.
char const kEveryField[] = R"(
system_diagram_metadata {
  schema_version { major: "2" minor: "0" patch: "0" }
  qsa {
    device_topology { id: "0" used: "yes" size_kb: "4194304" base_address: "0x4000000000"
                      tag: "DDR[0]" slr: "SLR0" sp_tag: "DDR[0]" type: MEM_UNSET }
    device_topology { id: "1" tag: "DDR3[0]" type: MEM_DDR3 }
    device_topology { id: "2" tag: "DDR[1]" type: MEM_DDR4 }
    device_topology { id: "3" tag: "DRAM[0]" type: MEM_DRAM }
    device_topology { id: "4" tag: "HBM[0]" type: MEM_HBM }
    device_topology { id: "5" tag: "PLRAM[0]" type: MEM_BRAM }
    device_topology { id: "6" tag: "URAM[0]" type: MEM_URAM }
    device_topology { id: "7" tag: "stream_in" type: MEM_STREAMING }
    device_topology { id: "8" tag: "s2s" type: MEM_STREAMING_CONNECTION }
    device_topology { }
    design_intent: "server_managed"
    design_intent: ""
    design_intent: "external_host"
    clocks { name: "clk_kernel_00" orig_name: "clk_out1" domain: "kernel" source: "pll0"
             kind: "user" comment: "main clock" id: 0 frequency: 300 period: 3.333
             requested_frequency: 300 achieved_frequency: 287.5 status: CLOCK_SCALABLE }
    clocks { name: "ext_clk" id: -1 frequency: -1 period: -1 status: CLOCK_STATUS_UNSET }
    clocks { name: "clk_reserved" id: 2 frequency: 50 status: CLOCK_RESERVED }
    clocks { name: "clk_fixed" id: 3 frequency: 100.125 status: CLOCK_FIXED }
    vendor: "acme"
    board_id: "u2"
    name: "acme_u2_gen3x4"
    version_major: "3"
    version_minor: "1"
    description: "A PCIe accelerator card, \"quoted\" and \\ escaped"
    generated_by { name: "platgen" version: "2026.1" change_list: "4711"
                   timestamp: "Tue Mar  3 10:00:00 2026" }
    board { name: "u2" vendor: "acme" part: "xc-part-2" board_part: "acme:u2:1.0" }
    available_resources { lut: "1182240" reg: "2364480" bram: "2160" dsp: "6840" uram: "960" }
  }
  qrxbin {
    user_regions {
      kernels {
        ports { name: "m_axi_gmem" mode: "master" detail_a: "a" data_width: "512"
                port_type: "addressable" detail_b: "b" }
        ports { name: "s_axi_control" }
        arguments { id: "0" name: "in1" address_kind: "1" port: "m_axi_gmem" size: "0x8"
                    offset: "0x10" detail_a: "a" detail_b: "b" port_interface_type: "addressable" }
        arguments { id: "1" }
        clock_refs { name: "ap_clk" clock_id: "0" plio: "plio_a" annotated_arg: "arg0"
                     requested_frequency: 300 achieved_frequency: 287.5 }
        name: "vadd"
        description: "vector addition"
        estimated_resources { lut: "2401" reg: "3810" bram: "2" dsp: "0" uram: "1" }
      }
      kernels { name: "vmul" }
      compute_units {
        actual_resources { lut: "1" reg: "2" bram: "3" dsp: "4" uram: "5"
                           design_state: DESIGN_STATE_UNSET }
        actual_resources { lut: "10" design_state: DESIGN_STATE_SYNTHESIZED }
        actual_resources { lut: "20" design_state: DESIGN_STATE_FULLY_PLACED }
        actual_resources { lut: "30" design_state: DESIGN_STATE_ROUTED }
        clock_refs { name: "ap_clk" clock_id: "-1" plio: "p" annotated_arg: "a"
                     requested_frequency: -1 achieved_frequency: 0.5 }
        reset_pins: "ap_rst_n"
        reset_pins: ""
        slr_resources {
          utilization { resource: "LUT" used: "2398" available: "394080" }
          utilization { resource: "" }
          slr: "SLR0"
        }
        slr_resources { slr: "SLR1" }
        id: "0"
        kernel_name: "vadd"
        name: "vadd_1"
        base_address: "0x800000"
      }
      compute_units { name: "vmul_1" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" arg_index: "0" arg_name: "in1" mode: "read"
                 instance: "vadd_1" pin: "m_axi_gmem" }
        destination { type: "memory" id: "4" arg_index: "1" arg_name: "x" mode: "write"
                      instance: "HBM[0]" pin: "S00_AXI" }
      }
      connectivity { id: "1" }
      name: "ulp"
      type: "user_region"
      inst_path: "level0_i/ulp"
      available_resources {
        by_slr { slr: "SLR0" lut: "394080" reg: "788160" bram: "720" dsp: "2280" uram: "320" }
        by_slr { }
        lut: "1182240" reg: "2364480" bram: "2160" dsp: "6840" uram: "960"
      }
    }
    user_regions { }
    generated_by { name: "qvcc" version: "2026.2" change_list: "5120"
                   timestamp: "Sat Nov 21 12:00:00 2026" detail_a: "a" detail_b: "b"
                   label: "vadd.qrxbin" note: "n" label_copy: "vadd.qrxbin" flag: true }
    platform { name: "acme_u2_gen3x4" vendor: "acme" board: "u2" version: "3.1"
               description: "d" part: "xc-part-2" path: "/opt/platforms/u2" properties: "p1"
               properties: "" properties: "p3" }
  }
}
)";

// The full names of the fields of `type` and of every message type below it.
void collectDeclaredFields(google::protobuf::Descriptor const* type, std::set<std::string>& seen,
                           std::set<std::string>& fields) {
  if (!seen.insert(type->full_name()).second) return;
  for (int index = 0; index < type->field_count(); ++index) {
    google::protobuf::FieldDescriptor const* field = type->field(index);
    fields.insert(field->full_name());
    if (field->message_type() != nullptr)
      collectDeclaredFields(field->message_type(), seen, fields);
  }
}

// The full names of the fields that hold something other than their default somewhere in
// `message`.
void collectSetFields(google::protobuf::Message const& message, std::set<std::string>& fields) {
  google::protobuf::Reflection const* reflection = message.GetReflection();
  std::vector<google::protobuf::FieldDescriptor const*> present;
  reflection->ListFields(message, &present);
  for (google::protobuf::FieldDescriptor const* field : present) {
    fields.insert(field->full_name());
    if (field->message_type() == nullptr) continue;
    if (!field->is_repeated()) {
      collectSetFields(reflection->GetMessage(message, field), fields);
      continue;
    }
    for (int index = 0; index < reflection->FieldSize(message, field); ++index) {
      collectSetFields(reflection->GetRepeatedMessage(message, field, index), fields);
    }
  }
}

class ProfileAnalyzerSystemDiagramTest : public ::testing::Test {
 protected:
  ProfileAnalyzerSystemDiagramTest()
      : container(std::make_shared<Container>()), diagram(container) {}

  static std::string written(IPA::SystemDiagramInterface const& from) {
    std::ostringstream out;
    from.serializeToJson(out);
    return out.str();
  }

  static void read(IPA::SystemDiagramInterface& into, std::string const& text) {
    std::istringstream in(text);
    into.serializeFromJson(in);
  }

  std::shared_ptr<Container> container;
  ProfileAnalyzerSystemDiagram diagram;
};

// ---- Edge cases --------------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramTest, FreshDiagramIsWrittenAsTheVersionStampAloneAndReadsBack) {
  std::string const text = written(diagram);
  EXPECT_EQ(text, kFreshDocument);

  auto otherContainer = std::make_shared<Container>(parse<Container>(R"(
    system_diagram_metadata { qsa { vendor: "stale" } })"));
  ProfileAnalyzerSystemDiagram other(otherContainer);
  read(other, text);
  EXPECT_TRUE(sameMessage(parse<Container>(R"(
    system_diagram_metadata { schema_version { major: "2" minor: "0" patch: "0" } })"),
                          *otherContainer));
}

TEST_F(ProfileAnalyzerSystemDiagramTest, EveryFieldSurvivesAWriteAndARead) {
  *container = parse<Container>(kEveryField);
  Container const before = *container;
  std::string const text = written(diagram);

  auto readContainer = std::make_shared<Container>();
  ProfileAnalyzerSystemDiagram reader(readContainer);
  read(reader, text);
  EXPECT_TRUE(google::protobuf::util::MessageDifferencer::Equals(before, *readContainer));
  EXPECT_TRUE(sameMessage(before, *readContainer));
  // Writing again gives the same text: nothing was lost or added on the way.
  EXPECT_EQ(written(reader), text);
}

TEST_F(ProfileAnalyzerSystemDiagramTest, EveryFieldOfTheSchemaIsSetInTheRoundTripTree) {
  // Keeps the tree of the round trip honest when the schema grows a field.
  std::set<std::string> seen;
  std::set<std::string> declared;
  collectDeclaredFields(Container::descriptor(), seen, declared);
  std::set<std::string> set;
  collectSetFields(parse<Container>(kEveryField), set);
  std::set<std::string> missing;
  for (std::string const& name : declared) {
    if (set.count(name) == 0) missing.insert(name);
  }
  EXPECT_TRUE(missing.empty()) << "first field never set: " << *missing.begin();
  EXPECT_EQ(declared.size(), 153u);
}

TEST_F(ProfileAnalyzerSystemDiagramTest, EnumerationsAreWrittenAsTheirNames) {
  *container = parse<Container>(kEveryField);
  std::string const text = written(diagram);
  for (char const* line :
       {"\"type\": \"MEM_UNSET\"\n", "\"type\": \"MEM_DDR3\"\n", "\"type\": \"MEM_DDR4\"\n",
        "\"type\": \"MEM_DRAM\"\n", "\"type\": \"MEM_HBM\"\n", "\"type\": \"MEM_BRAM\"\n",
        "\"type\": \"MEM_URAM\"\n", "\"type\": \"MEM_STREAMING\"\n",
        "\"type\": \"MEM_STREAMING_CONNECTION\"\n", "\"status\": \"CLOCK_STATUS_UNSET\"\n",
        "\"status\": \"CLOCK_RESERVED\"\n", "\"status\": \"CLOCK_FIXED\"\n",
        "\"status\": \"CLOCK_SCALABLE\"\n", "\"design_state\": \"DESIGN_STATE_UNSET\"\n",
        "\"design_state\": \"DESIGN_STATE_SYNTHESIZED\"\n",
        "\"design_state\": \"DESIGN_STATE_FULLY_PLACED\"\n",
        "\"design_state\": \"DESIGN_STATE_ROUTED\"\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line;
  }
  EXPECT_EQ(text.find("\"type\": 4"), std::string::npos);
  EXPECT_EQ(text.find("\"status\": 3"), std::string::npos);
}

TEST_F(ProfileAnalyzerSystemDiagramTest, ClockWithoutPlatformValuesIsWrittenInFullWithMinusOne) {
  *container = parse<Container>(R"(
    system_diagram_metadata {
      qsa { clocks { name: "ext_clk" id: -1 frequency: -1 status: CLOCK_SCALABLE } }
    })");
  EXPECT_EQ(written(diagram),
            "{\n"
            " \"system_diagram_metadata\": {\n"
            "  \"schema_version\": {\n"
            "   \"major\": \"2\",\n"
            "   \"minor\": \"0\",\n"
            "   \"patch\": \"0\"\n"
            "  },\n"
            "  \"qsa\": {\n"
            "   \"device_topology\": [],\n"
            "   \"design_intent\": [],\n"
            "   \"clocks\": [\n"
            "    {\n"
            "     \"name\": \"ext_clk\",\n"
            "     \"orig_name\": \"\",\n"
            "     \"domain\": \"\",\n"
            "     \"source\": \"\",\n"
            "     \"kind\": \"\",\n"
            "     \"comment\": \"\",\n"
            "     \"id\": -1,\n"
            "     \"frequency\": -1,\n"
            "     \"period\": 0,\n"
            "     \"requested_frequency\": 0,\n"
            "     \"achieved_frequency\": 0,\n"
            "     \"status\": \"CLOCK_SCALABLE\"\n"
            "    }\n"
            "   ],\n"
            "   \"vendor\": \"\",\n"
            "   \"board_id\": \"\",\n"
            "   \"name\": \"\",\n"
            "   \"version_major\": \"\",\n"
            "   \"version_minor\": \"\",\n"
            "   \"description\": \"\"\n"
            "  }\n"
            " }\n"
            "}\n"
            "\n");
}

TEST_F(ProfileAnalyzerSystemDiagramTest, EmptySectionPrintsItsPrimitiveFieldsButNotItsMessages) {
  *container = parse<Container>(R"(
    system_diagram_metadata { qrxbin { generated_by { } } })");
  EXPECT_EQ(written(diagram),
            "{\n"
            " \"system_diagram_metadata\": {\n"
            "  \"schema_version\": {\n"
            "   \"major\": \"2\",\n"
            "   \"minor\": \"0\",\n"
            "   \"patch\": \"0\"\n"
            "  },\n"
            "  \"qrxbin\": {\n"
            "   \"user_regions\": [],\n"
            "   \"generated_by\": {\n"
            "    \"name\": \"\",\n"
            "    \"version\": \"\",\n"
            "    \"change_list\": \"\",\n"
            "    \"timestamp\": \"\",\n"
            "    \"detail_a\": \"\",\n"
            "    \"detail_b\": \"\",\n"
            "    \"label\": \"\",\n"
            "    \"note\": \"\",\n"
            "    \"label_copy\": \"\",\n"
            "    \"flag\": false\n"
            "   }\n"
            "  }\n"
            " }\n"
            "}\n"
            "\n");
}

TEST_F(ProfileAnalyzerSystemDiagramTest, DocumentWithOneUnknownKeyIsRefusedAndChangesNothing) {
  *container = parse<Container>(R"(system_diagram_metadata { qsa { vendor: "acme" } })");
  Container const before = *container;
  std::string const error = runtimeErrorText([this] {
    read(diagram, R"({"system_diagram_metadata": {"qsa": {"vendor": "x", "colour": "red"}}})");
  });
  EXPECT_TRUE(startsWith(error, "Deserializing failed with error: ")) << error;
  EXPECT_TRUE(endsWith(error, ".")) << error;
  // The reason is the parser's own; it names the key it did not know.
  EXPECT_NE(error.find("colour"), std::string::npos) << error;
  // The interface lets a refused read leave the tree partly replaced; this diagram converts the
  // whole document before it touches the tree, and a session relies on that after a bad file.
  EXPECT_TRUE(sameMessage(before, *container));
}

TEST_F(ProfileAnalyzerSystemDiagramTest, UnknownKeyAtTheTopIsRefused) {
  std::string const error =
      runtimeErrorText([this] { read(diagram, R"({"system_diagram_metadata": {}, "extra": 1})"); });
  EXPECT_TRUE(startsWith(error, "Deserializing failed with error: ")) << error;
  EXPECT_TRUE(endsWith(error, ".")) << error;
  EXPECT_FALSE(container->has_system_diagram_metadata());
}

// ---- Reading -----------------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramTest, WronglyCasedEnumerationNameIsRefusedAndChangesNothing) {
  *container = parse<Container>(R"(
    system_diagram_metadata { qsa { device_topology { tag: "HBM[0]" type: MEM_HBM } } })");
  Container const before = *container;
  for (char const* name : {"mem_hbm", "Mem_Hbm", "MEM_hbm"}) {
    std::string const document =
        std::string(R"({"system_diagram_metadata": {"qsa": {"device_topology": [{"type": ")") +
        name + R"("}]}}})";
    std::string const error = runtimeErrorText([&] { read(diagram, document); });
    EXPECT_TRUE(startsWith(error, "Deserializing failed with error: ")) << name << ": " << error;
    EXPECT_TRUE(endsWith(error, ".")) << name << ": " << error;
    EXPECT_NE(error.find(name), std::string::npos) << error;
    EXPECT_TRUE(sameMessage(before, *container)) << name;
  }
}

TEST_F(ProfileAnalyzerSystemDiagramTest, UnknownEnumerationNameIsRefused) {
  std::string const error = runtimeErrorText([this] {
    read(diagram,
         R"({"system_diagram_metadata": {"qsa": {"clocks": [{"status": "CLOCK_FAST"}]}}})");
  });
  EXPECT_TRUE(startsWith(error, "Deserializing failed with error: ")) << error;
  EXPECT_FALSE(container->has_system_diagram_metadata());
}

TEST_F(ProfileAnalyzerSystemDiagramTest, EveryEnumerationNameIsReadAsItsValue) {
  struct Row {
    char const* document;
    char const* expected;
  };
  Row const rows[] = {
      {R"({"system_diagram_metadata": {"qsa": {"device_topology": [
            {"type": "MEM_UNSET"}, {"type": "MEM_DDR3"}, {"type": "MEM_DDR4"},
            {"type": "MEM_DRAM"}, {"type": "MEM_HBM"}, {"type": "MEM_BRAM"}, {"type": "MEM_URAM"},
            {"type": "MEM_STREAMING"}, {"type": "MEM_STREAMING_CONNECTION"}]}}})",
       R"(system_diagram_metadata { qsa {
            device_topology { } device_topology { type: MEM_DDR3 }
            device_topology { type: MEM_DDR4 } device_topology { type: MEM_DRAM }
            device_topology { type: MEM_HBM } device_topology { type: MEM_BRAM }
            device_topology { type: MEM_URAM } device_topology { type: MEM_STREAMING }
            device_topology { type: MEM_STREAMING_CONNECTION } } })"},
      {R"({"system_diagram_metadata": {"qsa": {"clocks": [
            {"status": "CLOCK_STATUS_UNSET"}, {"status": "CLOCK_RESERVED"},
            {"status": "CLOCK_FIXED"}, {"status": "CLOCK_SCALABLE"}]}}})",
       R"(system_diagram_metadata { qsa {
            clocks { } clocks { status: CLOCK_RESERVED } clocks { status: CLOCK_FIXED }
            clocks { status: CLOCK_SCALABLE } } })"},
      {R"({"system_diagram_metadata": {"qrxbin": {"user_regions": [{"compute_units": [
            {"actual_resources": [
              {"design_state": "DESIGN_STATE_UNSET"}, {"design_state": "DESIGN_STATE_SYNTHESIZED"},
              {"design_state": "DESIGN_STATE_FULLY_PLACED"},
              {"design_state": "DESIGN_STATE_ROUTED"}]}]}]}}})",
       R"(system_diagram_metadata { qrxbin { user_regions { compute_units {
            actual_resources { } actual_resources { design_state: DESIGN_STATE_SYNTHESIZED }
            actual_resources { design_state: DESIGN_STATE_FULLY_PLACED }
            actual_resources { design_state: DESIGN_STATE_ROUTED } } } } })"},
  };
  for (Row const& row : rows) {
    read(diagram, row.document);
    EXPECT_TRUE(sameMessage(parse<Container>(row.expected), *container)) << row.document;
  }
}

TEST_F(ProfileAnalyzerSystemDiagramTest, ReadingReplacesTheWholeTree) {
  *container = parse<Container>(R"(
    system_diagram_metadata {
      schema_version { major: "2" minor: "0" patch: "0" }
      qsa { vendor: "acme" clocks { name: "clk" } }
      qrxbin { generated_by { name: "old" version: "1" } }
    })");
  read(diagram, R"({"system_diagram_metadata": {"qrxbin": {"generated_by": {"name": "new"}}}})");
  // Fields absent from the document are gone, also inside a section the document does name.
  EXPECT_TRUE(sameMessage(parse<Container>(R"(
    system_diagram_metadata { qrxbin { generated_by { name: "new" } } })"),
                          *container));
}

TEST_F(ProfileAnalyzerSystemDiagramTest, EmptyObjectEmptiesTheTree) {
  *container = parse<Container>(R"(system_diagram_metadata { qsa { vendor: "acme" } })");
  read(diagram, "{}");
  EXPECT_TRUE(sameMessage(Container(), *container));
}

TEST_F(ProfileAnalyzerSystemDiagramTest, StoredSchemaVersionIsNotCheckedOnReading) {
  read(diagram, R"({"system_diagram_metadata": {"schema_version":
                     {"major": "9", "minor": "8", "patch": "7"}, "qsa": {"vendor": "v"}}})");
  EXPECT_TRUE(sameMessage(parse<Container>(R"(
    system_diagram_metadata {
      schema_version { major: "9" minor: "8" patch: "7" }
      qsa { vendor: "v" }
    })"),
                          *container));
}

TEST_F(ProfileAnalyzerSystemDiagramTest, TextThatIsNotJsonIsRefused) {
  *container = parse<Container>(R"(system_diagram_metadata { qsa { vendor: "acme" } })");
  Container const before = *container;
  std::string const error =
      runtimeErrorText([this] { read(diagram, "{\"system_diagram_metadata\": "); });
  EXPECT_TRUE(startsWith(error, "Deserializing failed with error: ")) << error;
  EXPECT_TRUE(endsWith(error, ".")) << error;
  EXPECT_TRUE(sameMessage(before, *container));
}

TEST_F(ProfileAnalyzerSystemDiagramTest, ReadingTakesTheWholeStreamBeyondOneReadBlock) {
  // Longer than the reader's block, so a reader that stops after its first block fails here.
  std::string const longVendor(200000, 'v');
  read(diagram, "{\"system_diagram_metadata\": {\"qsa\": {\"vendor\": \"" + longVendor +
                    "\", \"name\": \"after\"}}}");
  EXPECT_EQ(container->system_diagram_metadata().qsa().vendor(), longVendor);
  EXPECT_EQ(container->system_diagram_metadata().qsa().name(), "after");
}

TEST_F(ProfileAnalyzerSystemDiagramTest, EmptyStreamIsRefused) {
  // An empty file is no diagram, not an empty one.
  *container = parse<Container>(R"(system_diagram_metadata { qsa { vendor: "acme" } })");
  Container const before = *container;
  std::string const error = runtimeErrorText([this] { read(diagram, ""); });
  EXPECT_TRUE(startsWith(error, "Deserializing failed with error: ")) << error;
  EXPECT_TRUE(sameMessage(before, *container));
}

// ---- Writing -----------------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramTest, ConstructionAddsNothingToTheContainer) {
  EXPECT_FALSE(container->has_system_diagram_metadata());
  EXPECT_EQ(diagram.getContainer(), container);
}

TEST_F(ProfileAnalyzerSystemDiagramTest, SchemaVersionConstantsAreTwoZeroZero) {
  EXPECT_EQ(ProfileAnalyzerSystemDiagram::schemaMajorVersion, "2");
  EXPECT_EQ(ProfileAnalyzerSystemDiagram::schemaMinorVersion, "0");
  EXPECT_EQ(ProfileAnalyzerSystemDiagram::schemaPatchLevel, "0");
}

TEST_F(ProfileAnalyzerSystemDiagramTest, WritingStampsTheVersionIntoTheTreeAndCreatesNoSection) {
  written(diagram);
  EXPECT_TRUE(sameMessage(parse<Container>(R"(
    system_diagram_metadata { schema_version { major: "2" minor: "0" patch: "0" } })"),
                          *container));
}

TEST_F(ProfileAnalyzerSystemDiagramTest, WritingReplacesAnOlderStampInTextAndTree) {
  *container = parse<Container>(R"(
    system_diagram_metadata { schema_version { major: "1" minor: "5" patch: "3" } })");
  EXPECT_EQ(written(diagram), kFreshDocument);
  EXPECT_TRUE(sameMessage(parse<Container>(R"(
    system_diagram_metadata { schema_version { major: "2" minor: "0" patch: "0" } })"),
                          *container));
}

TEST_F(ProfileAnalyzerSystemDiagramTest, WritingAppendsToWhatTheStreamHolds) {
  std::ostringstream out;
  out << "before|";
  diagram.serializeToJson(out);
  EXPECT_EQ(out.str(), std::string("before|") + kFreshDocument);
}

TEST_F(ProfileAnalyzerSystemDiagramTest, StringsAreEscapedAndReadBackAsTheyWere) {
  *container = parse<Container>(R"(
    system_diagram_metadata { qsa { description: "say \"hi\"\\ then\nnew line" } })");
  std::string const text = written(diagram);
  EXPECT_NE(text.find("   \"description\": \"say \\\"hi\\\"\\\\ then\\nnew line\"\n"),
            std::string::npos)
      << text;
  Container const before = *container;
  container->Clear();
  read(diagram, text);
  EXPECT_TRUE(sameMessage(before, *container));
}

}  // namespace
