// The reminders file shared by the app and the agent.
#include "TestSupport.h"
#include "notifications/PendingRequests.h"

#include <gtest/gtest.h>

using namespace tidemark;
using namespace tidemark::testing;

namespace {

NotificationRequest req(const std::string& id, double delay) {
    return {id, "title " + id, "subtitle " + id, delay, true, true};
}

std::vector<std::string> ids(const std::vector<PendingRequest>& list) {
    std::vector<std::string> out;
    for (const auto& p : list) {
        out.push_back(p.request.identifier);
    }
    return out;
}

class PendingRequestsTest : public ::testing::Test {
protected:
    TempDir dir;
    std::filesystem::path path = dir.path() / "sub" / "notifications.sqlite";
};

} // namespace

TEST_F(PendingRequestsTest, KeepsRequestsInTheOrderTheyFallDueAcrossHandles) {
    PendingRequests app(path);
    app.add(req("late", 300), 1000);
    app.add(req("tieA", 60), 1000);
    app.add(req("early", 10), 1000);
    app.add(req("tieB", 30), 1030); // due with tieA; filed later
    // The agent's own handle sees the app's writes, times made absolute.
    PendingRequests agent(path);
    const auto pending = agent.pending();
    EXPECT_EQ(ids(pending), (std::vector<std::string>{"early", "tieA", "tieB", "late"}));
    EXPECT_EQ(pending[0].fireAt, 1010);
    EXPECT_EQ(pending[0].request, req("early", 10));
}

TEST_F(PendingRequestsTest, AddingAnIdentifierAgainReplacesTheRequest) {
    PendingRequests file(path);
    file.add(req("a", 10), 0);
    file.add(req("b", 20), 0);
    auto changed = req("a", 50);
    changed.title = "new";
    file.add(changed, 0);
    const auto pending = file.pending();
    ASSERT_EQ(ids(pending), (std::vector<std::string>{"b", "a"}));
    EXPECT_EQ(pending[1].request.title, "new");
    EXPECT_EQ(pending[1].fireAt, 50);
}

TEST_F(PendingRequestsTest, ADueRequestLeavesOnlyWhenThatFilingOfItIsDelivered) {
    PendingRequests file(path);
    for (const auto& [id, delay] :
         std::vector<std::pair<std::string, double>>{{"p1", 5}, {"p2", 10}, {"p3", 10.5}}) {
        file.add(req(id, delay), 100);
    }
    EXPECT_TRUE(file.due(104.9).empty());
    const auto due = file.due(110); // at the moment
    ASSERT_EQ(ids(due), (std::vector<std::string>{"p1", "p2"}));
    EXPECT_EQ(file.due(110), due); // reading hands nothing out
    // The app files p2 again while the old one is on its way: delivering the old keeps the new.
    file.add(req("p2", 20), 100);
    EXPECT_EQ(file.removeDelivered(due), 1u);
    EXPECT_EQ(ids(file.pending()), (std::vector<std::string>{"p3", "p2"}));
    EXPECT_EQ(file.removeDelivered(due), 0u);
    // Filings are never numbered twice, even for the same request filed again on an emptied file.
    file.removeAll();
    file.add(req("p1", 5), 100);
    EXPECT_EQ(file.removeDelivered(due), 0u);
    EXPECT_EQ(ids(file.pending()), (std::vector<std::string>{"p1"}));
}

TEST_F(PendingRequestsTest, APlanReplacesTheRequestsToComeAndLeavesTheDueOnes) {
    PendingRequests file(path);
    const double before = wallClockNow();
    file.add(req("overdue", -10), before);
    file.add(req("coming", 3600), before);
    file.replaceAll([] { return std::vector{req("new1", 60), req("new2", 120)}; });
    const auto pending = file.pending();
    ASSERT_EQ(ids(pending), (std::vector<std::string>{"overdue", "new1", "new2"}));
    EXPECT_GE(pending[1].fireAt, before + 60);
    EXPECT_LE(pending[1].fireAt, wallClockNow() + 60);
}

TEST_F(PendingRequestsTest, RemoveTakesOnlyTheNamedRequests) {
    PendingRequests file(path);
    for (const char* id : {"a", "b", "c", "d"}) {
        file.add(req(id, 1), 0);
    }
    file.remove({"b", "d", "unknown"});
    EXPECT_EQ(ids(file.pending()), (std::vector<std::string>{"a", "c"}));
    file.removeAll();
    EXPECT_TRUE(file.pending().empty());
}

TEST_F(PendingRequestsTest, TheNextWakeIsTheEarliestOfRequestsAndRefreshes) {
    PendingRequests file(path);
    EXPECT_FALSE(file.nextWakeAfter(0));
    file.submitBackgroundTask({"refresh", 500});
    EXPECT_EQ(file.nextWakeAfter(0), 500);
    file.add(req("a", 100), 200); // 300
    file.add(req("b", -50), 200); // 150: overdue, waiting for a server
    EXPECT_EQ(file.nextWakeAfter(0), 150);
    EXPECT_EQ(file.nextWakeAfter(150), 300);
    EXPECT_EQ(file.nextWakeAfter(300), 500);
    EXPECT_FALSE(file.nextWakeAfter(500));
}

TEST_F(PendingRequestsTest, ABackgroundSubmissionReplacesTheEarlierOneAndIsTakenOnce) {
    PendingRequests file(path);
    file.submitBackgroundTask({"refresh", 500});
    file.submitBackgroundTask({"refresh", 900});
    file.submitBackgroundTask({"other", 700});
    ASSERT_EQ(file.backgroundTasks().size(), 2u);
    EXPECT_EQ(file.backgroundTasks()[1].earliestBeginDate, 900);
    EXPECT_TRUE(file.takeDueBackgroundTasks(699).empty());
    const auto due = file.takeDueBackgroundTasks(900);
    ASSERT_EQ(due.size(), 2u);
    EXPECT_EQ(due[0].identifier, "other");
    EXPECT_TRUE(file.backgroundTasks().empty());
    file.submitBackgroundTask({"refresh", 1});
    file.cancelAllBackgroundTasks();
    EXPECT_TRUE(file.backgroundTasks().empty());
}

TEST_F(PendingRequestsTest, TheAuthorisationQuestionIsRememberedInTheFile) {
    EXPECT_FALSE(PendingRequests(path).authorizationRequested());
    PendingRequests(path).setAuthorizationRequested();
    EXPECT_TRUE(PendingRequests(path).authorizationRequested());
}
