// The requests that read, write and change a session's diagram, over the protocol: every
// required field, unknown sessions, and the exact change each one makes, checked on the JSON
// that WriteSystemDiagram writes against golden files.
#include <memory>
#include <string>
#include <vector>

#include <google/protobuf/text_format.h>
#include <gtest/gtest.h>

#include "platform/dispatch/ConnectionMgr.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"
#include "tests/support/Golden.h"
#include "tests/support/LoggerCapture.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"
#include "tests/support/Messages.h"

namespace {

using qvtest::parse;

namespace wire = dispatch::system_diagram_server;
namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using qvtest::LoggerCapture;
using qvtest::requestFor;

class DiagramRequestsTest : public ::testing::Test {
 protected:
  DiagramRequestsTest() : handler(connections) {
    create("s1");
    wire::ReadSystemDiagram read;
    read.set_path(qvtest::dataFile("diagrams/base.json"));
    EXPECT_STATUS(send("s1", read), 200);
  }

  void create(std::string const& uuid) {
    dispatch::Session session;
    session.set_uuid(uuid);
    connections.createSession(session);
  }

  dispatch::Response send(std::string const& uuid, google::protobuf::Message const& message) {
    dispatch::Response response;
    connections.dispatch(requestFor(uuid, message), response);
    return response;
  }

  // The session's diagram as WriteSystemDiagram writes it.
  std::string written(std::string const& uuid = "s1") {
    wire::WriteSystemDiagram write;
    write.set_path(dir.file(uuid + ".json"));
    EXPECT_STATUS(send(uuid, write), 200);
    return qvtest::readFile(write.path());
  }

  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler handler;
  qvtest::TempDir dir;
};

TEST_F(DiagramRequestsTest, FreshSessionWritesTheEmptyDiagram) {
  create("fresh");
  EXPECT_GOLDEN(written("fresh"), "fresh_session.json");
}

TEST_F(DiagramRequestsTest, ReadThenWriteGivesTheStoredForm) {
  EXPECT_GOLDEN(written(), "base.json");
}

// ---- 400: a required field is missing ---------------------------------------------------------

struct Incomplete {
  char const* description;
  std::shared_ptr<google::protobuf::Message> message;
};

void PrintTo(Incomplete const& incomplete, std::ostream* out) { *out << incomplete.description; }

class IncompleteRequestTest : public DiagramRequestsTest,
                              public ::testing::WithParamInterface<Incomplete> {};

TEST_P(IncompleteRequestTest, IsAnswered400AndChangesNothing) {
  std::string const before = written();
  LoggerCapture log(dispatch::server::kLogException);
  dispatch::Response const response = send("s1", *GetParam().message);
  EXPECT_STATUS(response, 400);
  EXPECT_EQ(response.status().message(), "Bad Request");
  EXPECT_FALSE(response.has_payload());
  EXPECT_EQ(log.text(), "");
  EXPECT_EQ(written(), before);
}

TEST_P(IncompleteRequestTest, IsAnswered400EvenForAnUnknownSession) {
  EXPECT_STATUS(send("ghost", *GetParam().message), 400);
}

INSTANTIATE_TEST_SUITE_P(
    MissingField, IncompleteRequestTest,
    ::testing::Values(
        Incomplete{"ReadWithoutPath", std::make_shared<wire::ReadSystemDiagram>()},
        Incomplete{"WriteWithoutPath", std::make_shared<wire::WriteSystemDiagram>()},
        Incomplete{"UpsertKernelWithoutKernel", std::make_shared<wire::UpsertKernel>()},
        Incomplete{"UpsertQrxBinWithoutQrxBin", std::make_shared<wire::UpsertQrxBin>()},
        Incomplete{"UpsertQrxBinGeneratedByWithoutGeneratedBy",
                   std::make_shared<wire::UpsertQrxBinGeneratedBy>()},
        Incomplete{"UpdateComputeUnitWithoutComputeUnit",
                   std::make_shared<wire::UpdateComputeUnit>()},
        Incomplete{"UpsertConnectivityWithoutConnectivity",
                   std::make_shared<wire::UpsertConnectivity>()},
        Incomplete{"UpsertPlatformWithoutPlatform", std::make_shared<wire::UpsertPlatform>()}),
    [](::testing::TestParamInfo<Incomplete> const& param) { return param.param.description; });

TEST_P(IncompleteRequestTest, PayloadWhoseBytesDoNotParseIsAnswered400) {
  std::string const before = written();
  dispatch::Request request = requestFor("s1", *GetParam().message);
  // A first tag with a wire type that does not exist: the unpacking fails before anything is
  // filled in, and the field test refuses the request. (Bytes that break off inside a
  // sub-message would leave that sub-message present, and pass.)
  request.mutable_payload()->set_value("\x0f");
  dispatch::Response response;
  connections.dispatch(request, response);
  EXPECT_STATUS(response, 400);
  EXPECT_EQ(written(), before);
}

// ---- 500: the session is unknown ---------------------------------------------------------------

class UnknownSessionTest : public DiagramRequestsTest,
                           public ::testing::WithParamInterface<Incomplete> {};

TEST_P(UnknownSessionTest, IsAnswered500WithTheSessionTablesText) {
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send("ghost", *GetParam().message), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, no session with "
            "UUID 'ghost'.\n");
}

INSTANTIATE_TEST_SUITE_P(
    EveryRequest, UnknownSessionTest,
    ::testing::Values(
        Incomplete{"Read", std::make_shared<wire::ReadSystemDiagram>(
                               parse<wire::ReadSystemDiagram>(R"(path: "x.json")"))},
        Incomplete{"Write", std::make_shared<wire::WriteSystemDiagram>(
                                parse<wire::WriteSystemDiagram>(R"(path: "x.json")"))},
        Incomplete{"UpsertKernel",
                   std::make_shared<wire::UpsertKernel>(parse<wire::UpsertKernel>("kernel {}"))},
        Incomplete{"UpsertQrxBin",
                   std::make_shared<wire::UpsertQrxBin>(parse<wire::UpsertQrxBin>("qrxBin {}"))},
        Incomplete{"UpsertQrxBinGeneratedBy",
                   std::make_shared<wire::UpsertQrxBinGeneratedBy>(
                       parse<wire::UpsertQrxBinGeneratedBy>("generatedBy {}"))},
        Incomplete{"UpsertQsaClock", std::make_shared<wire::UpsertQsaClock>()},
        Incomplete{"GetQrxBinGeneratedBy", std::make_shared<wire::GetQrxBinGeneratedBy>()},
        Incomplete{"UpdateComputeUnit", std::make_shared<wire::UpdateComputeUnit>(
                                            parse<wire::UpdateComputeUnit>("computeUnit {}"))},
        Incomplete{"UpsertConnectivity", std::make_shared<wire::UpsertConnectivity>(
                                             parse<wire::UpsertConnectivity>("connectivity {}"))},
        Incomplete{"UpsertPlatform", std::make_shared<wire::UpsertPlatform>(
                                         parse<wire::UpsertPlatform>("platform {}"))}),
    [](::testing::TestParamInfo<Incomplete> const& param) { return param.param.description; });

// ---- 200: the exact change ---------------------------------------------------------------------

TEST_F(DiagramRequestsTest, UpsertKernelAddsANewKernelAndMergesAKnownOne) {
  LoggerCapture log(dispatch::server::kLogDebug);
  EXPECT_STATUS(send("s1", parse<wire::UpsertKernel>(R"(
      kernel { name: "vmul" arguments { id: "0" name: "a" address_kind: "1" } })")),
                200);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering Entering handleUpsertKernelRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving Entering handleUpsertKernelRequest\n");
  EXPECT_STATUS(send("s1", parse<wire::UpsertKernel>(R"(
      kernel { name: "vadd" clock_refs { name: "ap_clk" requested_frequency: 300 } })")),
                200);
  EXPECT_GOLDEN(written(), "upsert_kernel.json");
}

TEST_F(DiagramRequestsTest, UpsertKernelWithAnEmptyNameIsAnswered200AndChangesNothing) {
  std::string const before = written();
  EXPECT_STATUS(send("s1", parse<wire::UpsertKernel>(R"(kernel { ports { name: "p" } })")), 200);
  EXPECT_EQ(written(), before);
}

TEST_F(DiagramRequestsTest, UpsertKernelOnADiagramWithoutUserRegionIsAnswered500) {
  create("fresh");
  std::string const before = written("fresh");
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send("fresh", parse<wire::UpsertKernel>(R"(kernel { name: "vadd" })")), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: Cannot upsert kernel 'vadd': the system "
            "diagram has no user region..\n");
  EXPECT_EQ(written("fresh"), before);
}

TEST_F(DiagramRequestsTest, UpsertQrxBinMergesTheBuildSection) {
  EXPECT_STATUS(send("s1", parse<wire::UpsertQrxBin>(R"(
      qrxBin { generated_by { label: "nightly" } platform { name: "acme_u2" } })")),
                200);
  EXPECT_GOLDEN(written(), "upsert_qrxbin.json");
}

TEST_F(DiagramRequestsTest, UpsertQrxBinGeneratedByOverwritesTheFieldsItSets) {
  EXPECT_STATUS(send("s1", parse<wire::UpsertQrxBinGeneratedBy>(R"(
      generatedBy { version: "2026.3" timestamp: "Sat Nov 21 12:00:00 2026" flag: true })")),
                200);
  EXPECT_GOLDEN(written(), "upsert_qrxbin_generated_by.json");
}

TEST_F(DiagramRequestsTest, UpsertQsaClockMergesByNameOrIdAndAppendsTheRest) {
  EXPECT_STATUS(send("s1", parse<wire::UpsertQsaClock>(R"(
      clock { name: "clk_kernel_00" requested_frequency: 250 achieved_frequency: 248.5 })")),
                200);
  EXPECT_STATUS(send("s1", parse<wire::UpsertQsaClock>(R"(clock { id: 1 achieved_frequency: 449 })")),
                200);
  EXPECT_STATUS(send("s1", parse<wire::UpsertQsaClock>(R"(clock { name: "aie_clk" id: 7 })")), 200);
  EXPECT_GOLDEN(written(), "upsert_qsa_clock.json");
}

TEST_F(DiagramRequestsTest, UpsertQsaClockWithoutAClockMergesTheDefaultClock) {
  create("fresh");
  EXPECT_STATUS(send("fresh", wire::UpsertQsaClock()), 200);
  EXPECT_GOLDEN(written("fresh"), "upsert_qsa_clock_default.json");
}

TEST_F(DiagramRequestsTest, UpsertQsaClockGoesOnWithAPayloadThatDoesNotParse) {
  create("fresh");
  dispatch::Request request = requestFor("fresh", wire::UpsertQsaClock());
  request.mutable_payload()->set_value(std::string("\x0a\x80", 2));
  dispatch::Response response;
  connections.dispatch(request, response);
  EXPECT_STATUS(response, 200);
  EXPECT_GOLDEN(written("fresh"), "upsert_qsa_clock_default.json");
}

TEST_F(DiagramRequestsTest, GetQrxBinGeneratedByAnswersWithThePayload) {
  LoggerCapture log(dispatch::server::kLogDebug);
  dispatch::Response const response = send("s1", wire::GetQrxBinGeneratedBy());
  EXPECT_STATUS(response, 200);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering handleGetQrxBinGeneratedByRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleGetQrxBinGeneratedByRequest\n");
  ASSERT_TRUE(response.payload().Is<pb::qrxBinGeneratedBy>());
  pb::qrxBinGeneratedBy answer;
  ASSERT_TRUE(response.payload().UnpackTo(&answer));
  EXPECT_EQ(answer.name(), "qvcc");
  EXPECT_EQ(answer.version(), "2026.2");
  EXPECT_EQ(answer.change_list(), "");
  EXPECT_FALSE(answer.flag());
}

TEST_F(DiagramRequestsTest, GetQrxBinGeneratedByOnAFreshSessionCreatesTheSection) {
  create("fresh");
  dispatch::Response const response = send("fresh", wire::GetQrxBinGeneratedBy());
  EXPECT_STATUS(response, 200);
  pb::qrxBinGeneratedBy answer;
  ASSERT_TRUE(response.payload().UnpackTo(&answer));
  EXPECT_EQ(answer.ByteSizeLong(), 0u);
  EXPECT_GOLDEN(written("fresh"), "get_qrxbin_generated_by_fresh.json");
}

TEST_F(DiagramRequestsTest, GetQrxBinGeneratedByReplacesAPayloadTheResponseHeld) {
  dispatch::Response response;
  response.mutable_payload()->PackFrom(wire::WriteSystemDiagram());
  connections.dispatch(requestFor("s1", wire::GetQrxBinGeneratedBy()), response);
  EXPECT_STATUS(response, 200);
  EXPECT_TRUE(response.payload().Is<pb::qrxBinGeneratedBy>());
}

TEST_F(DiagramRequestsTest, UpdateComputeUnitAddsResourcesResetPinAndFrequencies) {
  EXPECT_STATUS(send("s1", parse<wire::UpdateComputeUnit>(R"(
      computeUnit {
        name: "vadd_2" id: "99" base_address: "0xdead"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1200" available: "394000" } }
        reset_pins: "ap_rst_n" reset_pins: "ignored_rst"
        clock_refs { name: "ap_clk" clock_id: "5" requested_frequency: 300 achieved_frequency: 287.5
                     plio: "plio_0" }
        clock_refs { name: "ap_clk" requested_frequency: 1 }
      })")),
                200);
  EXPECT_GOLDEN(written(), "update_compute_unit.json");
}

TEST_F(DiagramRequestsTest, UpdateComputeUnitForAnUnknownNameChangesNothing) {
  std::string const before = written();
  EXPECT_STATUS(send("s1", parse<wire::UpdateComputeUnit>(R"(
      computeUnit { name: "vmul_1" reset_pins: "ap_rst_n" })")),
                200);
  EXPECT_EQ(written(), before);
}

TEST_F(DiagramRequestsTest, UpsertConnectivityAddsThenMergesAComputeUnitConnection) {
  char const* const connection = R"(
      connectivity {
        source { type: "compute_unit" instance: "vadd_1" pin: "out" arg_name: "out" }
        destination { type: "compute_unit" instance: "vadd_2" pin: "in" }
      })";
  EXPECT_STATUS(send("s1", parse<wire::UpsertConnectivity>(connection)), 200);
  // The second time it is found by the names its ids stand for, and merged.
  EXPECT_STATUS(send("s1", parse<wire::UpsertConnectivity>(R"(
      connectivity {
        source { type: "compute_unit" instance: "vadd_1" mode: "stream" }
        destination { type: "compute_unit" instance: "vadd_2" }
      })")),
                200);
  EXPECT_GOLDEN(written(), "upsert_connectivity.json");
}

TEST_F(DiagramRequestsTest, UpsertConnectivityToAnUnknownComputeUnitAddsNothing) {
  std::string const before = written();
  EXPECT_STATUS(send("s1", parse<wire::UpsertConnectivity>(R"(
      connectivity {
        source { type: "compute_unit" instance: "vadd_1" }
        destination { type: "compute_unit" instance: "vmul_1" }
      })")),
                200);
  EXPECT_EQ(written(), before);
}

TEST_F(DiagramRequestsTest, UpsertPlatformMergesThePlatformRecord) {
  EXPECT_STATUS(send("s1", parse<wire::UpsertPlatform>(R"(
      platform { name: "acme_u2_gen3x4" vendor: "acme" properties: "pcie=gen3x4" })")),
                200);
  EXPECT_STATUS(send("s1", parse<wire::UpsertPlatform>(R"(
      platform { version: "3.1" properties: "hbm=8GB" })")),
                200);
  EXPECT_GOLDEN(written(), "upsert_platform.json");
}

TEST_F(DiagramRequestsTest, HandlersLogTheirLabels) {
  struct Row {
    std::shared_ptr<google::protobuf::Message> message;
    char const* label;
  };
  std::vector<Row> const rows = {
      {std::make_shared<wire::UpsertQrxBin>(parse<wire::UpsertQrxBin>("qrxBin {}")),
       "handleUpsertQrxBinRequest"},
      {std::make_shared<wire::UpsertQrxBinGeneratedBy>(
           parse<wire::UpsertQrxBinGeneratedBy>("generatedBy {}")),
       "handleUpsertQrxBinGeneratedByRequest"},
      {std::make_shared<wire::UpsertQsaClock>(), "handleUpsertQsaClock"},
      {std::make_shared<wire::UpdateComputeUnit>(parse<wire::UpdateComputeUnit>("computeUnit {}")),
       "handleUpdateComputeUnitRequest"},
      {std::make_shared<wire::UpsertConnectivity>(
           parse<wire::UpsertConnectivity>("connectivity {}")),
       "handleUpsertConnectivityRequest"},
      {std::make_shared<wire::UpsertPlatform>(parse<wire::UpsertPlatform>("platform {}")),
       "handleUpsertPlatform"},
  };
  for (auto const& row : rows) {
    LoggerCapture log(dispatch::server::kLogDebug);
    EXPECT_STATUS(send("s1", *row.message), 200) << row.label;
    EXPECT_EQ(log.text(), std::string("SYSTEM_DIAGRAM_HANDLER: Entering ") + row.label +
                              "\nSYSTEM_DIAGRAM_HANDLER: Leaving " + row.label + "\n");
  }
}

}  // namespace
