#include "platform/dispatch/RequestHandler.h"

#include <cstdint>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "platform/dispatch/ConnectionMgr.h"

namespace {

using dispatch::Request;
using dispatch::Response;
using dispatch::StatusResponse;
using dispatch::StatusResponse_Code;
using dispatch::server::ConnectionMgr;
using dispatch::server::RequestHandler;

class RequestHandlerTest : public ::testing::Test {
 protected:
  // The smallest service there is: it never serves anything, the tests only use the base.
  class IdleHandler : public RequestHandler {
   public:
    IdleHandler(std::string const& name, ConnectionMgr& connections)
        : RequestHandler(name, connections) {}
    void handle_request(Request const&, Response&) override {}
  };

  static Request requestFor(std::string const& service) {
    Request request;
    request.set_service(service);
    return request;
  }

  static Request requestFor(std::string const& service, std::uint32_t major, std::uint32_t minor) {
    Request request = requestFor(service);
    request.mutable_version()->set_major(major);
    request.mutable_version()->set_minor(minor);
    return request;
  }

  // "major.minor.patch" of the handler's recorded version, to compare in one go.
  static std::string versionOf(RequestHandler const& handler) {
    return std::to_string(handler.getVersion().major()) + "." +
           std::to_string(handler.getVersion().minor()) + "." +
           std::to_string(handler.getVersion().patch());
  }

  // Runs `call`, expects an exception of exactly type E, and returns its text.
  template <class E, class Call>
  static std::string thrown(Call call) {
    try {
      call();
    } catch (E const& error) {
      EXPECT_EQ(typeid(error), typeid(E));
      return error.what();
    } catch (...) {
      ADD_FAILURE() << "an exception of another type";
      return "";
    }
    ADD_FAILURE() << "no exception";
    return "";
  }

  // Declared first: every handler below must be gone before it is.
  ConnectionMgr connections;
  IdleHandler handler{"dispatch.test_service", connections};
};

// ---- Registration -------------------------------------------------------------------------------

TEST_F(RequestHandlerTest, ConstructionRegistersUnderTheName) {
  EXPECT_EQ(handler.getName(), "dispatch.test_service");
  EXPECT_EQ(connections.findHandler("dispatch.test_service"), &handler);
}

TEST_F(RequestHandlerTest, SecondHandlerOfTheSameNameThrowsAndTheFirstStays) {
  EXPECT_EQ(thrown<std::invalid_argument>(
                [&] { IdleHandler second("dispatch.test_service", connections); }),
            "a handler for service 'dispatch.test_service' is already registered");
  EXPECT_EQ(connections.findHandler("dispatch.test_service"), &handler);
}

TEST_F(RequestHandlerTest, HandlersOfOtherNamesRegisterSideBySide) {
  IdleHandler other("dispatch.other_service", connections);
  EXPECT_EQ(connections.findHandler("dispatch.test_service"), &handler);
  EXPECT_EQ(connections.findHandler("dispatch.other_service"), &other);
}

TEST_F(RequestHandlerTest, DestructionUnregistersAndFreesTheName) {
  {
    IdleHandler temporary("dispatch.temporary", connections);
    ASSERT_EQ(connections.findHandler("dispatch.temporary"), &temporary);
  }
  EXPECT_EQ(connections.findHandler("dispatch.temporary"), nullptr);
  // The name can be taken again once its handler is gone.
  IdleHandler again("dispatch.temporary", connections);
  EXPECT_EQ(connections.findHandler("dispatch.temporary"), &again);
}

TEST_F(RequestHandlerTest, UnregisteringAHandlerOfTheSameNameFromElsewhereKeepsTheRegisteredOne) {
  // A handler of the same name that belongs to another connection manager is not the one
  // registered here, so taking it out must leave ours in place.
  ConnectionMgr elsewhere;
  IdleHandler namesake("dispatch.test_service", elsewhere);
  connections.unregisterHandler(namesake);
  EXPECT_EQ(connections.findHandler("dispatch.test_service"), &handler);
  EXPECT_EQ(elsewhere.findHandler("dispatch.test_service"), &namesake);
}

// ---- validateRequest ----------------------------------------------------------------------------

TEST_F(RequestHandlerTest, RequestForAnotherServiceIsAnswered404) {
  Response response;
  EXPECT_FALSE(handler.validateRequest(requestFor("dispatch.other_service"), response));
  EXPECT_EQ(response.status().code(), StatusResponse::NOT_FOUND);
  EXPECT_EQ(response.status().code(), 404);
  EXPECT_EQ(response.status().message(), "Not Found");
}

TEST_F(RequestHandlerTest, RequestWithoutServiceIsAnswered404) {
  Response response;
  EXPECT_FALSE(handler.validateRequest(requestFor(""), response));
  EXPECT_EQ(response.status().code(), 404);
  EXPECT_EQ(response.status().message(), "Not Found");
}

TEST_F(RequestHandlerTest, AnotherServiceWinsOverAnotherVersion) {
  handler.setVersionFromString("2.0.0");
  Response response;
  EXPECT_FALSE(handler.validateRequest(requestFor("dispatch.other_service", 7, 0), response));
  EXPECT_EQ(response.status().code(), 404);
  EXPECT_EQ(response.status().message(), "Not Found");
}

TEST_F(RequestHandlerTest, RequestOfAnotherMajorVersionIsAnswered400) {
  handler.setVersionFromString("2.1.0");
  Response response;
  EXPECT_FALSE(handler.validateRequest(requestFor("dispatch.test_service", 3, 1), response));
  EXPECT_EQ(response.status().code(), StatusResponse::BAD_REQUEST);
  EXPECT_EQ(response.status().code(), 400);
  EXPECT_EQ(response.status().message(), "Bad Request");
}

TEST_F(RequestHandlerTest, RequestOfAnOlderMajorVersionIsAnswered400) {
  handler.setVersionFromString("2.1.0");
  Response response;
  EXPECT_FALSE(handler.validateRequest(requestFor("dispatch.test_service", 1, 9), response));
  EXPECT_EQ(response.status().code(), 400);
  EXPECT_EQ(response.status().message(), "Bad Request");
}

TEST_F(RequestHandlerTest, RequestWithAnAllZeroVersionIsStillAVersion) {
  // A version that is present but all zero is a request for major 0, not "any".
  handler.setVersionFromString("2.0.0");
  Request request = requestFor("dispatch.test_service");
  request.mutable_version();
  Response response;
  EXPECT_FALSE(handler.validateRequest(request, response));
  EXPECT_EQ(response.status().code(), 400);
  EXPECT_EQ(response.status().message(), "Bad Request");
}

TEST_F(RequestHandlerTest, RequestOfTheSameMajorAndAnotherMinorPasses) {
  handler.setVersionFromString("2.1.0");
  Response response;
  EXPECT_TRUE(handler.validateRequest(requestFor("dispatch.test_service", 2, 7), response));
  // A request that passes leaves the response as it was.
  EXPECT_FALSE(response.has_status());
}

TEST_F(RequestHandlerTest, RequestWithoutVersionPasses) {
  handler.setVersionFromString("5.0.0");
  Response response;
  EXPECT_TRUE(handler.validateRequest(requestFor("dispatch.test_service"), response));
  EXPECT_FALSE(response.has_status());
}

TEST_F(RequestHandlerTest, RequestPassesAHandlerWithoutRecordedVersionAtMajorZero) {
  Response response;
  EXPECT_TRUE(handler.validateRequest(requestFor("dispatch.test_service", 0, 4), response));
  EXPECT_FALSE(response.has_status());
}

// ---- sessionFromRequest -------------------------------------------------------------------------

TEST_F(RequestHandlerTest, SessionFromRequestIsTheRequestsUuid) {
  Request request = requestFor("dispatch.test_service");
  request.set_session_uuid("6f1c2a9e-0b47-4d3a-9c1e-2f5b8a7d4e30");
  EXPECT_EQ(handler.sessionFromRequest(request), "6f1c2a9e-0b47-4d3a-9c1e-2f5b8a7d4e30");
}

TEST_F(RequestHandlerTest, SessionFromRequestWithoutUuidIsEmpty) {
  EXPECT_EQ(handler.sessionFromRequest(requestFor("dispatch.test_service")), "");
}

TEST_F(RequestHandlerTest, SessionFromRequestKeepsTheUuidAsItStands) {
  // Nothing is checked or trimmed: the text belongs to the session tables to judge.
  Request request = requestFor("dispatch.other_service");
  request.set_session_uuid(" not a uuid ");
  EXPECT_EQ(handler.sessionFromRequest(request), " not a uuid ");
}

// ---- setVersionFromString -----------------------------------------------------------------------

TEST_F(RequestHandlerTest, VersionIsZeroUntilSet) { EXPECT_EQ(versionOf(handler), "0.0.0"); }

TEST_F(RequestHandlerTest, GoodVersionTextsAreRecorded) {
  struct Row {
    char const* text;
    char const* recorded;
  };
  Row const rows[] = {
      {"1.0.0", "1.0.0"},
      {"2", "2.0.0"},
      {"3.4", "3.4.0"},
      {"10.20.30", "10.20.30"},
      {"0", "0.0.0"},
      {"007.08.009", "7.8.9"},
      {"4294967295.4294967295.4294967295", "4294967295.4294967295.4294967295"},
  };
  for (Row const& row : rows) {
    handler.setVersionFromString("9.9.9");  // so that every part must be written
    handler.setVersionFromString(row.text);
    EXPECT_EQ(versionOf(handler), row.recorded) << "text '" << row.text << "'";
  }
}

TEST_F(RequestHandlerTest, BadVersionTextsThrowAndLeaveTheVersion) {
  char const* const rows[] = {
      "",
      "1.",
      "a.b",
      "1.2.3.4",
      "-1",
      "4294967296",              // one past the largest part
      "1.99999999999999999999",  // far past it
      ".1",
      "1..2",
      "1.2.",
      " 1.2.3",
      "1.2.3 ",
      "1,2,3",
      "+1",
      "v1.2.3",
      "1.2.x",
  };
  handler.setVersionFromString("7.8.9");
  for (char const* text : rows) {
    EXPECT_EQ(thrown<std::invalid_argument>([&] { handler.setVersionFromString(text); }),
              std::string("service 'dispatch.test_service': version text '") + text +
                  "' is not of the form MAJOR.MINOR.PATCH")
        << "text '" << text << "'";
    EXPECT_EQ(versionOf(handler), "7.8.9") << "text '" << text << "'";
  }
}

TEST_F(RequestHandlerTest, BadVersionMessageNamesTheService) {
  IdleHandler other("dispatch.other_service", connections);
  EXPECT_EQ(thrown<std::invalid_argument>([&] { other.setVersionFromString("1.x"); }),
            "service 'dispatch.other_service': version text '1.x' is not of the form "
            "MAJOR.MINOR.PATCH");
}

// ---- stockResponse and stockText ----------------------------------------------------------------

TEST_F(RequestHandlerTest, StockResponsesCarryTheStandardTexts) {
  struct Row {
    StatusResponse_Code code;
    int number;
    char const* text;
  };
  Row const rows[] = {
      {StatusResponse::OK, 200, "OK"},
      {StatusResponse::BAD_REQUEST, 400, "Bad Request"},
      {StatusResponse::NOT_FOUND, 404, "Not Found"},
      {StatusResponse::INTERNAL_SERVER_ERROR, 500, "Internal Server Error"},
      {StatusResponse::UNSET, 0, "Unknown Status"},
      {static_cast<StatusResponse_Code>(302), 302, "Unknown Status"},
      {static_cast<StatusResponse_Code>(501), 501, "Unknown Status"},
  };
  for (Row const& row : rows) {
    Response response;
    RequestHandler::stockResponse(row.code, response);
    EXPECT_EQ(response.status().code(), row.number) << row.text;
    EXPECT_EQ(response.status().message(), row.text) << row.number;
    EXPECT_EQ(RequestHandler::stockText(row.code), row.text) << row.number;
  }
}

TEST_F(RequestHandlerTest, StockResponseReplacesAnEarlierStatus) {
  Response response;
  response.mutable_status()->set_code(StatusResponse::OK);
  response.mutable_status()->set_message("all is well, says the handler");
  RequestHandler::stockResponse(StatusResponse::INTERNAL_SERVER_ERROR, response);
  EXPECT_EQ(response.status().code(), 500);
  EXPECT_EQ(response.status().message(), "Internal Server Error");
}

TEST_F(RequestHandlerTest, StockResponseLeavesThePayloadAlone) {
  dispatch::Session carried;
  carried.set_name("carried");
  carried.set_uuid("0d6e5d1c-3b0f-4f0e-8d43-1d7c0c0b9a11");
  Response response;
  response.mutable_payload()->PackFrom(carried);

  RequestHandler::stockResponse(StatusResponse::NOT_FOUND, response);

  ASSERT_TRUE(response.has_payload());
  dispatch::Session unpacked;
  ASSERT_TRUE(response.payload().UnpackTo(&unpacked));
  EXPECT_EQ(unpacked.name(), "carried");
  EXPECT_EQ(unpacked.uuid(), "0d6e5d1c-3b0f-4f0e-8d43-1d7c0c0b9a11");
  EXPECT_EQ(response.status().message(), "Not Found");
}

TEST_F(RequestHandlerTest, StockResponseAddsNoPayload) {
  Response response;
  RequestHandler::stockResponse(StatusResponse::OK, response);
  EXPECT_FALSE(response.has_payload());
}

}  // namespace
