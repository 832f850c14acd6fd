// SPDX-FileCopyrightText: Velmora contributors
// SPDX-License-Identifier: GPL-3.0-or-later
// Lets system calls fail one after another while the window saves, opens, imports and exports.
// Ends with an error if a file or the analysis is lost, or if the window does not report the
// fault. tests/faults.sh builds and runs it.

#include "tests/support/faults.h"

#include "fuzz/acts.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <malloc.h>
#include <random>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr unsigned longestTrial = 10;           ///< seconds; more is a hang
constexpr rlim_t usualMemory = rlim_t(4) << 30; ///< of a trial, in bytes
constexpr rlim_t mostHeadroom = rlim_t(256) << 20;
constexpr rlim_t headroomStep = rlim_t(2) << 20;
constexpr int kills = 50;

/// The faults of one kind of call.
struct Fault
{
    const char* name;
    FaultCall call;
    QVector<int> errors;         ///< tried for one call, and for all calls from one on
    QVector<int> harmlessErrors; ///< must make no difference; 0 transfers a part
};

const QVector<Fault>& faults()
{
    static const QVector<Fault> all{
        {"open", FaultCall::Open, {EIO, EMFILE}, {EINTR}},
        {"read", FaultCall::Read, {EIO}, {EINTR, 0}},
        {"write", FaultCall::Write, {EIO, ENOSPC}, {EINTR, 0}},
        {"sync", FaultCall::Sync, {EIO, ENOSPC}, {EINTR, EINVAL, ENOSYS, ENOTSUP}},
        {"rename", FaultCall::Rename, {EIO, ENOSPC}, {EINTR}},
        {"truncate", FaultCall::Truncate, {EIO}, {EINTR}},
        {"close", FaultCall::Close, {EIO, ENOSPC}, {EINTR}},
        {"map", FaultCall::Map, {EIO, ENOMEM}, {}},
        {"allocate", FaultCall::Allocate, {ENOMEM}, {}},
    };
    return all;
}

/// Memory that the program has asked for, in bytes.
rlim_t addressSpace()
{
    return rlim_t(contentOf("/proc/self/statm").split(' ').first().toULongLong())
           * rlim_t(sysconf(_SC_PAGESIZE));
}

void limitMemory(rlim_t bytes)
{
    const rlimit limit{bytes, RLIM_INFINITY};
    setrlimit(RLIMIT_AS, &limit);
}

/// One fault during an act.
struct Trial
{
    FaultPlan plan{};
    bool isHarmless = false; ///< true if it must make no difference
    rlim_t headroom = 0;     ///< bytes of memory left, instead of the plan; 0 for the plan

    QString text() const
    {
        return headroom > 0 ? QString("%1 bytes of memory").arg(headroom)
                            : QString("%1, error %2, call %3%4")
                                  .arg(faults().at(int(plan.call)).name)
                                  .arg(plan.error)
                                  .arg(plan.number)
                                  .arg(plan.isLasting ? " and all others" : "");
    }
};

/// What the process of a trial reports to its parent.
struct Report
{
    int calls;   ///< calls of the kind to fail; -1 unless the trial came to its end
    bool isDone; ///< true if the act gave its result without fault and without message
};

class Faults : public ActWindow
{
public:
    Faults()
        : report(static_cast<Report*>(mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE,
                                           MAP_SHARED | MAP_ANONYMOUS, -1, 0)))
    {
    }

    /// Tries the acts of the word: "exports", which include kills, "imports", which include
    /// opens, or the name of one. Returns true if there are any and no trial failed.
    bool run(const QString& word)
    {
        const auto tryNamed = [&](const QVector<Act>& list) {
            for (const Act& next : list) {
                if (word == next.name || word == (next.leastPiece > 0 ? "exports" : "imports")) {
                    tryAct(next);
                }
            }
        };
        tryNamed(acts());
        const QVector<Act> large = largeActs();
        tryNamed(large);
        if (word == "exports" || word == "kills") {
            tryKills(large.first());
        }
        return isFaultless && !names.isEmpty();
    }

    static void printHeading()
    {
        std::printf("| act |");
        for (const Fault& fault : faults()) {
            std::printf(" %s |", fault.name);
        }
        std::printf(" trials |\n|%s\n", qPrintable(QString("---|").repeated(2 + faults().size())));
    }

private:
    /// Learns what the act does without faults, and prepares for doing it again.
    void learn(const Act& next)
    {
        act = next;
        if (act.prepare) {
            act.prepare();
            before = act.result();
        }
        usual = answered(act.perform, act.files);
        whole = act.result();
        usual += unread();
        names = workNames();
        if (!act.prepare) {
            before = whole;
        } else if (before == whole) {
            complain("does nothing");
        } else {
            act.prepare();
        }
    }

    /// Restores the folder as it was before the act.
    void restore()
    {
        for (const QString& name : workNames()) {
            if (!names.contains(name)) {
                QFile::remove(work(name));
            }
        }
        if (act.leastPiece > 0) {
            act.prepare();
        }
    }

    void complain(const QString& text)
    {
        std::printf("%s: %s\n", qPrintable(act.name), qPrintable(text));
        isFaultless = false;
    }

    /// Does the act with all faults, and prints how many calls there were.
    void tryAct(const Act& next)
    {
        learn(next);
        counts.clear();
        trials = 0;
        const auto perform = [this] {
            act.perform();
            if (isTrial) {
                report->calls = disarmFaults();
            }
        };
        const QStringList answers = answered(perform, act.files, [this] { tryFaults(); });
        if (isTrial) {
            limitMemory(usualMemory);
            const QByteArray result = act.result();
            endTrial(result, answers + unread());
        }
        restore();
        std::printf("| %s |", qPrintable(act.name));
        for (const int count : qAsConst(counts)) {
            std::printf(" %d |", count);
        }
        std::printf(" %d |\n", trials);
    }

    /// Continues in a child process for every fault, and after all of them in this process.
    void tryFaults()
    {
        for (const Fault& fault : faults()) {
            const bool isMemory = fault.call == FaultCall::Allocate;
            int count = 0;
            if (isMemory ? act.leastPiece > 0 : !act.files.isEmpty()) {
                for (const int error : fault.errors + fault.harmlessErrors) {
                    // An interrupted call is repeated, for ever if every call is interrupted.
                    for (int lasting = 0; lasting < (isMemory || error == EINTR ? 1 : 2);
                         ++lasting) {
                        count = qMax(count, tryCalls(fault, error, lasting == 1));
                    }
                }
            }
            counts.append(count);
        }
        const FaultPlan unlimited{FaultCall::Allocate, 0, 0, false, folder.constData(), 1};
        rlim_t headroom = act.leastPiece > 0 ? headroomStep : mostHeadroom;
        while (!isTrial && headroom < mostHeadroom && !tryOut({unlimited, false, headroom})) {
            headroom += headroomStep;
        }
    }

    /// Lets one call after another fail until none is left. Returns how many there were.
    int tryCalls(const Fault& fault, int error, bool isLasting)
    {
        Trial next{{fault.call, error, 1, isLasting, folder.constData(), act.leastPiece},
                   fault.harmlessErrors.contains(error),
                   0};
        while (!isTrial) {
            tryOut(next);
            if (report->calls < next.plan.number) {
                break;
            }
            ++next.plan.number;
        }
        return next.plan.number - 1;
    }

    /// Lets a child process continue with the fault; in the child it returns at once. In the
    /// parent it returns true if the child did the act as without a fault.
    bool tryOut(const Trial& next)
    {
        if (isTrial) {
            return false;
        }
        restore();
        trial = next;
        *report = {-1, false};
        const pid_t child = fork();
        if (child == 0) {
            isTrial = true;
            alarm(longestTrial);
            malloc_trim(0);
            limitMemory(trial.headroom > 0 ? addressSpace() + trial.headroom : usualMemory);
            armFaults(&trial.plan);
            return false;
        }
        int status = 0;
        waitpid(child, &status, 0);
        ++trials;
        if (!WIFEXITED(status)) {
            complain(trial.text() + ": ended by signal " + QString::number(WTERMSIG(status)));
        }
        isFaultless = isFaultless && status == 0;
        return report->isDone;
    }

    /// Judges the trial of this process and ends it.
    [[noreturn]] void endTrial(const QByteArray& result, const QStringList& told)
    {
        report->isDone = result == whole && told == usual;
        QString problem = verdict(result, told);
        if (problem.isEmpty()) {
            QStringList again = answered(act.perform, act.files);
            const bool isWhole = act.result() == whole;
            problem = isWhole && again + unread() == usual ? "" : "cannot be done again";
        }
        if (!problem.isEmpty()) {
            complain(trial.text() + ": " + problem + "; told: " + told.join(" / "));
        }
        _exit(problem.isEmpty() ? 0 : 1);
    }

    /// What is wrong after a trial; empty if nothing.
    QString verdict(const QByteArray& result, const QStringList& told) const
    {
        const bool hasFailed =
            trial.headroom > 0 || (report->calls >= trial.plan.number && !trial.isHarmless);
        if (workNames() != names) {
            return "left a file";
        }
        if (result != whole && !(act.isKept ? act.isKept(result, whole) : result == before)) {
            return "damaged";
        }
        if (told != usual) {
            return hasFailed ? "" : "reported without need";
        }
        // A result despite a fault in reading is no fault, and some memory is not needed.
        const bool mayGoWell =
            act.leastPiece == 0 || trial.headroom > 0 || trial.plan.call == FaultCall::Allocate;
        return result != whole || (hasFailed && !mayGoWell) ? "not reported" : "";
    }

    /// Kills processes at random moments of the act.
    void tryKills(const Act& save)
    {
        learn(save);
        const auto perform = [this] {
            act.perform();
            if (isTrial) {
                _exit(0);
            }
        };
        answered(perform, act.files, [this] {
            QElapsedTimer elapsed;
            elapsed.start();
            killAfter(-1);
            std::mt19937 generator(1);
            std::uniform_int_distribution<int> moment(0, int(elapsed.nsecsElapsed() / 1000));
            for (int number = 0; number < kills; ++number) {
                killAfter(moment(generator));
            }
        });
        std::printf("%d kills: %d left the older project, %d a file velmora-*.tmp beside it\n",
                    kills, olderKept, leftovers);
    }

    /// Lets a child process continue and kills it after this many microseconds; never if negative.
    void killAfter(int time)
    {
        if (isTrial) {
            return;
        }
        restore();
        const pid_t child = fork();
        if (child == 0) {
            isTrial = true;
            return;
        }
        if (time >= 0) {
            std::this_thread::sleep_for(std::chrono::microseconds(time));
            kill(child, SIGKILL);
        }
        waitpid(child, nullptr, 0);
        const QByteArray found = act.result();
        olderKept += int(found == before);
        if (found != before && found != whole) {
            complain("damaged by a kill");
        }
        for (const QString& name : workNames()) {
            const bool isLeftover = !names.contains(name);
            leftovers += int(isLeftover);
            if (isLeftover
                && !QRegularExpression("^velmora-[0-9a-f]+\\.tmp$").match(name).hasMatch()) {
                complain("a kill left " + name);
            }
        }
    }

    Act act;
    QByteArray before; ///< the result as it was before the act
    QByteArray whole;  ///< the result without a fault
    QStringList usual; ///< messages without a fault
    QStringList names; ///< names of the files without a fault
    Trial trial;
    bool isTrial = false; ///< true in a child process
    Report* const report; ///< shared with the child process
    const QByteArray folder = files.path("work").toUtf8();
    QVector<int> counts;
    int trials = 0;
    int olderKept = 0;
    int leftovers = 0;
    bool isFaultless = true;
};

} // namespace

int main(int argc, char** argv)
{
    if (armFaults == nullptr) {
        std::fprintf(stderr, "The library of faults is not preloaded.\n");
        return 2;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, 0); // the buffer is empty when a process begins
    const QTemporaryDir settings;
    qputenv("XDG_CONFIG_HOME", settings.path().toLocal8Bit());
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // Large pieces come from the system alone, so that nothing kept from before is headroom.
    mallopt(M_MMAP_THRESHOLD, 1 << 17);
    mallopt(M_ARENA_MAX, 1);
    QApplication application(argc, argv);
    const QString word = application.arguments().value(1);
    if (word == "heading") {
        Faults::printHeading();
        return 0;
    }
    return Faults().run(word) ? 0 : 1;
}
