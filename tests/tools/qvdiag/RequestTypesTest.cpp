#include "tools/qvdiag/RequestTypes.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "proto/system_diagram_server.pb.h"
#include "tools/qvdiag/UsageError.h"

namespace qvdiag {
namespace {

namespace wire = dispatch::system_diagram_server;

TEST(RequestTypesTest, KnowsTheSixteenRequestsInTheServicesOrder) {
  std::vector<std::string> const expected = {"UtilizationDuringBrenloRun",
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
                                             "UpsertPlatform"};
  EXPECT_EQ(RequestTypes::names(), expected);
}

TEST(RequestTypesTest, EveryNameMakesAMessageOfItsType) {
  for (std::string const& name : RequestTypes::names()) {
    SCOPED_TRACE(name);
    auto const message = RequestTypes::fromJson(name, "{}");
    EXPECT_EQ(message->GetTypeName(), "dispatch.system_diagram_server." + name);
  }
}

TEST(RequestTypesTest, FillsTheMessageFromJsonInEitherFieldSpelling) {
  auto const message = RequestTypes::fromJson(
      "UpsertQsaClock", R"({"clock": {"name": "clk_a", "id": 3, "orig_name": "a"}})");
  auto const& clock = dynamic_cast<wire::UpsertQsaClock const&>(*message).clock();
  EXPECT_EQ(clock.name(), "clk_a");
  EXPECT_EQ(clock.id(), 3);
  EXPECT_EQ(clock.orig_name(), "a");

  auto const make = RequestTypes::fromJson("MakeInitialSystemDiagram",
                                           R"({"rtdFile": "a.rtd", "generatedFlag": true})");
  auto const& made = dynamic_cast<wire::MakeInitialSystemDiagram const&>(*make);
  EXPECT_EQ(made.rtdfile(), "a.rtd");
  EXPECT_TRUE(made.generatedflag());
}

TEST(RequestTypesTest, UnknownTypeIsBadUseThatListsTheTypes) {
  try {
    RequestTypes::fromJson("UpsertEverything", "{}");
    FAIL() << "accepted";
  } catch (UsageError const& error) {
    EXPECT_EQ(std::string(error.what()),
              "unknown request type 'UpsertEverything'; the request types are: "
              "UtilizationDuringBrenloRun, AfterRunningBrenlo, MakeInitialSystemDiagram, "
              "ReadSystemDiagram, WriteSystemDiagram, UpsertKernelUse, UpsertKernel, "
              "UpsertQrxBin, UpsertQrxBinGeneratedBy, UpsertQsaClock, GetQrxBinGeneratedBy, "
              "UpdateSystemDiagramAfterBrenloRuns, UpdateComputeUnit, UpsertConnectivity, "
              "WriteFlowReport, UpsertPlatform");
  }
}

TEST(RequestTypesTest, MalformedJsonIsBadUseNamingTheType) {
  try {
    RequestTypes::fromJson("WriteSystemDiagram", R"({"path": )");
    FAIL() << "accepted";
  } catch (UsageError const& error) {
    EXPECT_EQ(std::string(error.what())
                  .rfind("the payload is not a valid WriteSystemDiagram in "
                         "JSON: ",
                         0),
              0u)
        << error.what();
  }
}

TEST(RequestTypesTest, UnknownFieldIsRefused) {
  try {
    RequestTypes::fromJson("WriteSystemDiagram", R"({"file": "x.json"})");
    FAIL() << "accepted";
  } catch (UsageError const& error) {
    std::string const text = error.what();
    EXPECT_EQ(text.rfind("the payload is not a valid WriteSystemDiagram in JSON: ", 0), 0u);
    EXPECT_NE(text.find("file"), std::string::npos) << text;
  }
}

TEST(RequestTypesTest, ListGivesEachEntryItsTypeInOrder) {
  auto const requests = RequestTypes::listFromJson(
      R"([{"type": "UpsertKernel", "payload": {"kernel": {"name": "vadd"}}},
          {"type": "GetQrxBinGeneratedBy"},
          {"type": "WriteFlowReport", "payload": {"path": "r.txt"}}])",
      "reqs.json");
  ASSERT_EQ(requests.size(), 3u);
  EXPECT_EQ(dynamic_cast<wire::UpsertKernel const&>(*requests[0]).kernel().name(), "vadd");
  EXPECT_EQ(requests[1]->GetTypeName(), "dispatch.system_diagram_server.GetQrxBinGeneratedBy");
  EXPECT_EQ(dynamic_cast<wire::WriteFlowReport const&>(*requests[2]).path(), "r.txt");
  EXPECT_TRUE(RequestTypes::listFromJson("[]", "empty.json").empty());
}

struct BadList {
  char const* json;
  char const* message;
};

BadList const kBadLists[] = {
    {R"({"type": "UpsertKernel"})",
     R"(reqs.json: expected an array of {"type": ..., "payload": {...}})"},
    {R"([{"type": "UpsertKernel"}, 7])",
     R"(reqs.json: entry 2: expected {"type": NAME, "payload": {...}})"},
    {R"([{"payload": {}}])", R"(reqs.json: entry 1: expected {"type": NAME, "payload": {...}})"},
    {R"([{"type": 3}])", R"(reqs.json: entry 1: expected {"type": NAME, "payload": {...}})"},
    {R"([{"type": "GetQrxBinGeneratedBy"}, {"type": "Nope"}])",
     "reqs.json: entry 2: unknown request type 'Nope'; the request types are: "
     "UtilizationDuringBrenloRun, AfterRunningBrenlo, MakeInitialSystemDiagram, "
     "ReadSystemDiagram, WriteSystemDiagram, UpsertKernelUse, UpsertKernel, UpsertQrxBin, "
     "UpsertQrxBinGeneratedBy, UpsertQsaClock, GetQrxBinGeneratedBy, "
     "UpdateSystemDiagramAfterBrenloRuns, UpdateComputeUnit, UpsertConnectivity, "
     "WriteFlowReport, UpsertPlatform"},
};

TEST(RequestTypesTest, ListRefusesWhatIsNotAListOfRequestsNamingTheEntry) {
  for (BadList const& row : kBadLists) {
    SCOPED_TRACE(row.json);
    try {
      RequestTypes::listFromJson(row.json, "reqs.json");
      ADD_FAILURE() << "accepted";
    } catch (UsageError const& error) {
      EXPECT_EQ(std::string(error.what()), row.message);
    }
  }
}

TEST(RequestTypesTest, ListNamesTheEntryWhosePayloadDoesNotFit) {
  try {
    RequestTypes::listFromJson(R"([{"type": "WriteFlowReport", "payload": {"file": "x"}}])",
                               "reqs.json");
    FAIL() << "accepted";
  } catch (UsageError const& error) {
    std::string const text = error.what();
    EXPECT_EQ(
        text.rfind("reqs.json: entry 1: the payload is not a valid WriteFlowReport in JSON: ", 0),
        0u)
        << text;
  }
  try {
    RequestTypes::listFromJson("[", "reqs.json");
    FAIL() << "accepted";
  } catch (UsageError const& error) {
    EXPECT_EQ(std::string(error.what()).rfind("reqs.json: not JSON: ", 0), 0u) << error.what();
  }
}

TEST(RequestTypesTest, RequestCarriesServiceSessionVersionAndPayload) {
  wire::WriteFlowReport report;
  report.set_path("/tmp/r.txt");
  dispatch::Request const request = RequestTypes::request("uuid-1", report);
  EXPECT_EQ(request.service(), "dispatch.system_diagram_server");
  EXPECT_EQ(request.session_uuid(), "uuid-1");
  EXPECT_EQ(request.version().major(), 1u);
  EXPECT_EQ(request.version().minor(), 0u);
  EXPECT_EQ(request.version().patch(), 0u);
  wire::WriteFlowReport unpacked;
  ASSERT_TRUE(request.payload().UnpackTo(&unpacked));
  EXPECT_EQ(unpacked.path(), "/tmp/r.txt");
}

TEST(RequestTypesTest, ResponsePrintsWithNumericStatusAndTypedPayload) {
  dispatch::Response response;
  response.mutable_status()->set_code(dispatch::StatusResponse::OK);
  response.mutable_status()->set_message("OK");
  ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy generatedBy;
  generatedBy.set_name("qvdiag");
  response.mutable_payload()->PackFrom(generatedBy);
  EXPECT_EQ(RequestTypes::toJson(response),
            "{\n"
            " \"status\": {\n"
            "  \"code\": 200,\n"
            "  \"message\": \"OK\"\n"
            " },\n"
            " \"payload\": {\n"
            "  \"@type\": \"type.googleapis.com/"
            "ProfileAnalyzerSystemDiagramSerializable.qrxBinGeneratedBy\",\n"
            "  \"name\": \"qvdiag\"\n"
            " }\n"
            "}\n");
}

}  // namespace
}  // namespace qvdiag
