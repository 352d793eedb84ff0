#include "commands.h"

#include "scenario/scenario_language.h"
#include "tds_server.h"

#include <map>

namespace kova::tds {
namespace {

/// `NAME PIECE …`, of which the rest may end in `after ROWS`.
Fault faultFrom(Fault::Kind atOnce, Fault::Kind later, const Arguments& words, std::size_t own) {
    words.requireCount(own, own + 2);
    Fault fault{words.text(1), atOnce};
    if (words.count() > own) {
        words.requireCount(own + 2);
        if (words.text(own) != "after")
            throw ScenarioError("neither the end nor \"after ROWS\": " + words.text(own));
        fault.kind = later;
        fault.afterRows = static_cast<std::size_t>(words.natural(own + 1));
    }
    return fault;
}

void fail(TdsServer& server, const Arguments& words) {
    constexpr std::size_t Own = 4;
    auto failing = faultFrom(Fault::Kind::Fail, Fault::Kind::FailLate, words, Own);
    failing.number = words.int32(2);
    failing.message = words.text(3);
    server.add(std::move(failing));
}

/// The same, or `NAME PIECE half`.
Fault cutFrom(Fault::Kind atOnce, Fault::Kind later, Fault::Kind half, const Arguments& words) {
    const bool cut = words.count() == 3 && words.text(2) == "half";
    return cut ? Fault{words.text(1), half} : faultFrom(atOnce, later, words, 2);
}

void hangUp(TdsServer& server, const Arguments& words) {
    server.add(cutFrom(Fault::Kind::HangUp, Fault::Kind::BreakOff, Fault::Kind::HangUpHalf, words));
}

void stall(TdsServer& server, const Arguments& words) {
    server.add(cutFrom(Fault::Kind::Stall, Fault::Kind::StallLate, Fault::Kind::StallHalf, words));
}

void hold(TdsServer& server, const Arguments& words) {
    words.requireCount(2);
    server.add({words.text(1), Fault::Kind::Hold});
}

void held(TdsServer& server, const Arguments& words) {
    words.requireCount(1);
    if (!server.awaitHeld())
        throw ScenarioError("no answer waits for recover");
}

void delay(TdsServer& server, const Arguments& words) {
    auto late = faultFrom(Fault::Kind::Delay, Fault::Kind::DelayLate, words, 3);
    late.pause = std::chrono::milliseconds(words.natural(2));
    server.add(std::move(late));
}

void logIns(TdsServer& server, const Arguments& words) {
    words.requireCount(2);
    static const std::map<std::string, LogIns, std::less<>> kinds{{"accept", LogIns::Accept},
                                                                  {"refuse", LogIns::Refuse},
                                                                  {"ignore", LogIns::Ignore},
                                                                  {"hang-up", LogIns::HangUp}};
    const auto kind = kinds.find(words.text(1));
    if (kind == kinds.end())
        throw ScenarioError("none of accept, refuse, ignore and hang-up: " + words.text(1));
    server.setLogIns(kind->second);
}

void stop(TdsServer& server, const Arguments& words) {
    words.requireCount(1);
    server.stop();
}

void recover(TdsServer& server, const Arguments& words) {
    words.requireCount(1);
    server.recover();
}

using Command = void (*)(TdsServer&, const Arguments&);
const std::map<std::string, Command, std::less<>> commands{
    {"fail", fail}, {"hang-up", hangUp}, {"delay", delay}, {"stall", stall},    {"hold", hold},
    {"held", held}, {"log-ins", logIns}, {"stop", stop},   {"recover", recover}};

} // namespace

bool carryOut(const std::string& line, TdsServer& server) {
    const Arguments words(scenarioWords(line));
    if (words.count() == 0)
        return true;
    if (words.text(0) == "quit")
        return false;
    const auto command = commands.find(words.text(0));
    if (command == commands.end())
        throw ScenarioError("no such command: " + words.text(0));
    command->second(server, words);
    return true;
}

std::string_view commandsHelp() {
    return "  fail PIECE NUMBER MESSAGE [after ROWS]\n"
           "                     queries whose text contains PIECE fail with that error\n"
           "  hang-up PIECE [after ROWS | half]\n"
           "                     the connection ends instead of an answer, in the middle of\n"
           "                     the row behind ROWS others, or of the answer's first packet\n"
           "  stall PIECE [after ROWS | half]\n"
           "                     nothing more comes until the client gives up; behind half a\n"
           "                     packet not even then\n"
           "  delay PIECE MILLISECONDS [after ROWS]\n"
           "                     the answer, or what comes behind ROWS rows, is that late\n"
           "  hold PIECE         the answer waits for recover\n"
           "  held               carried out when an answer waits so\n"
           "  log-ins accept|refuse|ignore|hang-up\n"
           "                     what becomes of log-ins from now on\n"
           "  stop               ends all connections and takes no more\n"
           "  recover            forgets all faults and takes connections and log-ins again\n"
           "  quit               ends\n";
}

} // namespace kova::tds
