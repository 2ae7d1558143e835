#include "tests/matrix/faultcases.h"

#include "tests/matrix/manners.h"

#include <algorithm>

namespace {

using End = FaultCase::End;

const char Garbage[] = "garbage";
const char ByteByByte[] = "byte by byte";
constexpr int SurelyInTime = 500; // bytes that arrive one by one
constexpr int MostPieces = 300;   // of a long reply, in time

/// Where a reply is cut: at a byte, or at so many sixteenths of it.
struct Place
{
    int bytes;
    int sixteenths = 0;

    int in(int replySize) const
    {
        return bytes + static_cast<int>(static_cast<qint64>(replySize) * sixteenths / 16);
    }
};

/// Before each byte up to the end of the fixed fields, then here and there in what follows.
std::vector<Place> places(const Manner &manner)
{
    std::vector<Place> all;
    all.reserve(32);
    for (int byte = 0; byte < manner.fixed; ++byte)
        all.push_back({byte});
    if (manner.isLong()) {
        for (int extra = 0; extra <= 2; ++extra)
            all.push_back({manner.fixed + extra});
        for (int sixteenths = 1; sixteenths < 16; ++sixteenths)
            all.push_back({0, sixteenths});
    }
    return all;
}

/// A reply whose head declares another length.
QByteArray declaring(QByteArray reply, int length)
{
    for (int i = 0; i < 3; ++i)
        reply[2 + i] = static_cast<char>(length >> (16 - 8 * i));
    return reply;
}

FaultCase::Change first(const Place &place)
{
    return [=](const QByteArray &reply) { return reply.left(place.in(reply.size())); };
}

class Collector
{
public:
    void addAll();
    std::vector<FaultCase> take() { return std::move(cases); }

private:
    void add(const char *kind, const QString &fault, const FaultCase::Change &arrival);
    void addAt(const char *kind, const char *fault, const Place &place, End end);
    void addSilence();
    void addCuts();
    void addPieces();
    void addLengths();
    void addStatuses();
    void addEndings();
    void addLate();

    size_t command = 0;
    std::vector<FaultCase> cases;
};

void Collector::add(const char *kind, const QString &fault, const FaultCase::Change &arrival)
{
    cases.push_back({command, kind, [=](int) { return fault; }, arrival});
}

void Collector::addAt(const char *kind, const char *fault, const Place &place, End end)
{
    const auto text = [=](int replySize) {
        return QString::fromLatin1(fault).arg(place.in(replySize));
    };
    cases.push_back({command, kind, text, first(place), end});
}

void Collector::addSilence()
{
    add("no reply", "drop", first({0}));
    add("one byte short", "cut=-1", [](const QByteArray &reply) { return reply.chopped(1); });
}

void Collector::addCuts()
{
    for (const Place &place : places(manners()[command]))
        addAt("cut", "cut=%1", place, End::Stays);
}

void Collector::addPieces()
{
    const auto whole = [](const QByteArray &reply) { return reply; };
    add(ByteByByte, "pieces=1", whole);
    const auto piece = [](int replySize) {
        return QStringLiteral("pieces=%1").arg(replySize / MostPieces + 1);
    };
    cases.push_back({command, "in pieces", piece, whole});
    if (!manners()[command].isLong())
        add("byte by byte, slowly", "pieces=1,pause=20", whole);
}

void Collector::addLengths()
{
    for (const int length : {0, 1, 0xFFFFFF})
        add("declared length", QStringLiteral("length=%1").arg(length),
            [=](const QByteArray &reply) { return declaring(reply, length); });
    for (const int more : {-1, 1})
        add("declared length", QString::asprintf("length=%+d", more),
            [=](const QByteArray &reply) { return declaring(reply, reply.size() - 5 + more); });
    if (manners()[command].wait == Manner::Declared)
        add("longer than the wait", "length=0xFFFFFF trail=800000", [](const QByteArray &reply) {
            return declaring(reply, 0xFFFFFF) + QByteArray(800000, '\xEE');
        });
}

void Collector::addStatuses()
{
    for (int status = 0; status < 256; ++status)
        add("status", QStringLiteral("status=%1").arg(status),
            [=](const QByteArray &) { return QByteArray("\xEA\xC5\0\0\1", 5) + char(status); });
    add(Garbage, "garbage", [](const QByteArray &reply) { return reply; });
}

void Collector::addEndings()
{
    for (const int count : {1, 1000})
        add("trailing bytes", QStringLiteral("trail=%1").arg(count),
            [=](const QByteArray &reply) { return reply + QByteArray(count, '\xEE'); });
    std::vector<Place> amidst = places(manners()[command]);
    amidst.push_back({0, 16});
    for (const Place &place : amidst) {
        addAt("closed", "close=%1", place, End::Closed);
        addAt("reset", "reset=%1", place, End::Reset);
    }
}

void Collector::addLate()
{
    for (const char *previous :
         {"getMode", "clearRecords", "deleteUser", "getUserList", "getMonthRecords",
          "getUserConfig", "getPalmprintImage", "getRemoteEnrollImages"}) {
        const auto found = std::find_if(manners().begin(), manners().end(), [=](const auto &m) {
            return qstrcmp(m.name, previous) == 0;
        });
        add("late reply of the previous", "late", [](const QByteArray &reply) { return reply; });
        cases.back().previous = static_cast<int>(found - manners().begin());
    }
}

void Collector::addAll()
{
    for (command = 0; command < manners().size(); ++command) {
        addSilence();
        addCuts();
        addPieces();
        addLengths();
        addStatuses();
        addEndings();
        addLate();
    }
}

} // namespace

bool FaultCase::arrivesWhole(int size) const
{
    const bool isSlow = kind == ByteByByte && size > SurelyInTime;
    return end != End::Reset && !isSlow;
}

int FaultCase::certainBytes(int size) const
{
    const Manner &struck = manners()[previous < 0 ? command : static_cast<size_t>(previous)];
    if (kind == Garbage)
        return 0;
    if (struck.isPlain())
        return 5;
    return qstrcmp(struck.name, "getRemoteEnrollImages") == 0 ? 6 : size;
}

std::vector<FaultCase> faultCases()
{
    Collector collector;
    collector.addAll();
    return collector.take();
}
