// Each operation of the host fails at its first, second and third call, in each command that calls it. What
// comes of it stands in expected.txt; what must hold whatever fails is asserted here.

#include "tests/sweep/Commands.h"
#include "tests/sweep/Expected.h"

#include <algorithm>
#include <iostream>
#include <set>

namespace kvtm::test {

namespace {

constexpr std::size_t callsThatFail = 3; // of each operation, in one command

struct Undisturbed {
    std::string outcome;
    Session::Counts calls;
};

Undisturbed Undisturb(const Command& command) {
    Session session;
    command.prepare(session);
    session.Carry(command.act);
    return {session.Outcome(), session.CallCounts()};
}

/// What comes of the command when this call fails.
std::string Disturb(const Command& command, const std::string& operation, std::size_t call) {
    SCOPED_TRACE(std::string(command.name) + ": " + operation + " " + std::to_string(call));
    Session session;
    command.prepare(session);
    session.Fail(operation, call);
    session.Carry(command.act);
    EXPECT_EQ(session.Failed(), std::vector<std::string>{operation});
    EXPECT_LE(session.ReportsOfTheFailure(), 1u);
    EXPECT_FALSE(session.Probe().Busy());
    const std::string outcome = session.Outcome();
    EXPECT_EQ(session.IsLoaded() ? session.WrongWhenUsed() : "", "");
    EXPECT_EQ(session.WrongWhenLoadedAnew(), "");
    return outcome;
}

CommandOutcomes OutcomesOf(const Command& command) {
    const Undisturbed undisturbed = Undisturb(command);
    CommandOutcomes outcomes{command.name, undisturbed.outcome, {}};
    for (const auto& [operation, count] : undisturbed.calls)
        for (std::size_t call = 1; call <= std::min(count, callsThatFail); ++call)
            outcomes.Add(Disturb(command, operation, call), operation, call);
    return outcomes;
}

std::string OperationsNeverCalled() {
    std::set<std::string_view> never(arvon::host::ReferenceHost::Operations().begin(),
                                     arvon::host::ReferenceHost::Operations().end());
    for (const Command& command : Commands())
        for (const auto& [operation, count] : Undisturb(command).calls)
            never.erase(operation);
    std::string names;
    for (const std::string_view name : never)
        names.append(name).append("\n");
    return names;
}

class Sweep : public testing::TestWithParam<const Command*> {};

TEST_P(Sweep, ComesOutAsExpected) {
    EXPECT_EQ(OutcomesOf(*GetParam()).Text(), ExpectedSection(GetParam()->name))
        << "review the difference, then: sweep_tests --write-expected";
}

std::vector<const Command*> All() {
    std::vector<const Command*> all;
    for (const Command& command : Commands())
        all.push_back(&command);
    return all;
}

/// As gtest allows a name.
std::string TestName(const testing::TestParamInfo<const Command*>& info) {
    std::string name = info.param->name;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Of, Sweep, testing::ValuesIn(All()), TestName);

TEST(SweepCoverage, ReachesEveryOperationButThese) {
    EXPECT_EQ(OperationsNeverCalled(), ExpectedSection(neverCalled));
}

void WriteExpected() {
    std::string text;
    for (const Command& command : Commands()) {
        std::cerr << command.name << '\n';
        text += SectionText(command.name, OutcomesOf(command).Text());
    }
    WriteExpectedFile(text + SectionText(neverCalled, OperationsNeverCalled()));
}

} // namespace

} // namespace kvtm::test

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc > 1 && std::string_view(argv[1]) == "--write-expected") {
        kvtm::test::WriteExpected();
        return 0;
    }
    return RUN_ALL_TESTS();
}
