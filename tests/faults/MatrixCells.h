#ifndef GNSS_TESTS_FAULTS_MATRIXCELLS_H
#define GNSS_TESTS_FAULTS_MATRIXCELLS_H

#include <set>
#include <string>
#include <vector>

// The cells of the fault matrix: every mode of gnss-setup, against every receiver family, under
// each fault that gnss-sim can put on the line, and what each cell must end with.

namespace FaultMatrix {

// The configurer a run ends up with, which decides what it can do and how long it may take.
enum class Configurer { Oem7, Csi, Pmcag, Generic };

struct Mode {
    std::string name;
    std::vector<std::string> arguments;  // before the port name
    bool detects;                        // whether the mode asks the receiver who it is
};

// A receiver family as gnss-sim plays it, and what the tool learns from it when all goes well.
struct Family {
    std::string receiver;  // gnss-sim's --receiver
    Configurer configurer;
    long answerBytes;      // what the receiver sends up to the answer that identifies it
};

// What is done to the console's side of the line, beside what gnss-sim does to the receiver's: the
// tool's wall clock stepped an hour back or forward while it waits, the line left with flow
// control, two stop bits and the modem lines watched before the tool opens it, the tool started
// as a session leader.
enum class Condition { None, ClockBack, ClockForward, DirtyLine, SessionLeader };

struct Fault {
    std::string name;
    // gnss-sim's options for the fault, given the family it is put on.
    std::vector<std::string> (*options)(const Family& family);
    // A condition of the console is put on one of gnss-sim's faults, named here, whose outcomes
    // the column must keep; "" for gnss-sim's faults themselves.
    std::string lineFault{};
    Condition condition = Condition::None;

    const std::string& LineFault() const { return lineFault.empty() ? name : lineFault; }
};

struct Cell {
    Mode mode;
    Family family;
    Fault fault;

    std::string Name() const { return mode.name + "_" + family.receiver + "_" + fault.name; }
};

const std::vector<Mode>& Modes();
const std::vector<Family>& Families();
const std::vector<Fault>& Faults();
std::vector<Cell> AllCells();

// What the tool makes of the receiver under the fault: its own family's configurer, or the
// generic one when the fault hides the receiver from every probe. Where the answer comes within
// a tenth of a time-out of deciding it, either may be right on a loaded machine, and so under
// valgrind, which slows the tool's reading of every byte beyond what the probes allow for.
std::vector<Configurer> SeenAs(const Family& family, const Fault& fault, bool underValgrind);

// What a run must end with. Printed values that come from the receiver may also be empty where
// the fault can keep the answer from arriving in time (valuesMayBeMissing); anything else in their
// place is wrong.
struct Expectation {
    std::set<int> statuses;
    std::string stdoutPattern;  // an ECMAScript regular expression the whole output must match
    std::string stderrText;     // exact
    int driverType = -1;        // the type the kernel driver is told last, -1 when it is not told
};

Expectation Expect(const Cell& cell, Configurer seen, const std::string& port);

// The longest a run of the cell may take by the tool's own waits and time-outs when it ends up
// with the configurer: the probes up to the one that finds the receiver, each at its longest, and
// then every exchange of the mode running to its time-out. In milliseconds.
long WorstCaseMs(const Cell& cell, Configurer seen);

}  // namespace FaultMatrix

#endif
