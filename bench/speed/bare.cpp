/// The baseline for the console's speed: a plain program without Qt that exchanges the same bytes
/// with the same simulated terminal under the same rules. Each line of its output is a name and a
/// number.

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;
using Bytes = std::vector<uint8_t>;

constexpr useconds_t PollPause = 1000;   // us
constexpr useconds_t FramePause = 10000; // us
constexpr size_t Width = 540;
constexpr size_t FrameSize = Width * 720;
constexpr size_t ShownWidth = 360;
constexpr size_t ShownHeight = 480;
constexpr size_t RecordSize = 100;
constexpr uint32_t PageRecords = 3000;
constexpr size_t MaxReply = 1 << 20;

[[noreturn]] void fail(const char *what)
{
    std::perror(what);
    std::exit(1);
}

double seconds(Clock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto inSeconds = [](const timeval &t) {
        return double(t.tv_sec) + double(t.tv_usec) / 1e6;
    };
    return inSeconds(usage.ru_utime) + inSeconds(usage.ru_stime);
}

int connectTo(uint16_t port)
{
    const int fd = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (fd < 0 || connect(fd, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
        fail("connect");
    const int on = 1;
    setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return fd;
}

size_t declaredTotal(const Bytes &reply)
{
    return 5U + (size_t(reply[2]) << 16 | size_t(reply[3]) << 8 | reply[4]);
}

/// Sends a request and polls every millisecond until the reply has its declared length. Returns
/// the reply's size.
size_t exchange(int fd, const Bytes &request, Bytes *reply)
{
    if (send(fd, request.data(), request.size(), 0) != ssize_t(request.size()))
        fail("send");
    size_t received = 0;
    for (;;) {
        ssize_t count = 0;
        while ((count =
                    recv(fd, reply->data() + received, reply->size() - received, MSG_DONTWAIT)) > 0)
            received += size_t(count);
        if (count == 0)
            fail("the terminal has left");
        if (received >= 5 && received >= declaredTotal(*reply))
            return received;
        usleep(PollPause);
    }
}

Bytes request(std::initializer_list<uint8_t> body)
{
    const uint8_t head[] = {0xEA, 0xC5, 0, 0, uint8_t(body.size())};
    Bytes bytes(sizeof head + body.size());
    std::copy(body.begin(), body.end(), std::copy(std::begin(head), std::end(head), bytes.begin()));
    return bytes;
}

/// Sends each request as soon as the last reply has arrived, to measure the terminal's own speed.
void exchangeWithoutPause(int fd, const Bytes &request, Bytes *reply)
{
    const auto receive = [&](size_t from, size_t to) {
        if (recv(fd, reply->data() + from, to - from, MSG_WAITALL) != ssize_t(to - from))
            fail("the terminal has left");
    };
    if (send(fd, request.data(), request.size(), 0) != ssize_t(request.size()))
        fail("send");
    receive(0, 5);
    receive(5, declaredTotal(*reply));
}

void ceiling(int fd, const Bytes &request, double perReply, double duration)
{
    Bytes reply(MaxReply);
    int count = 0;
    const auto begin = Clock::now();
    for (; seconds(Clock::now() - begin) < duration; ++count)
        exchangeWithoutPause(fd, request, &reply);
    std::printf("rate %.3f\n", count * perReply / seconds(Clock::now() - begin));
}

void roundTrips(int fd, int count)
{
    Bytes reply(MaxReply);
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        const auto begin = Clock::now();
        exchange(fd, request({0x05}), &reply);
        times.push_back(seconds(Clock::now() - begin));
    }
    std::nth_element(times.begin(), times.begin() + count / 2, times.end());
    std::printf("us %.2f\n", times[size_t(count) / 2] * 1e6);
}

/// Scales a frame by two thirds, by nearest neighbours, into pixels of 32 bits.
void scale(const uint8_t *frame, uint32_t *shown)
{
    const auto grey = [](uint8_t value) { return 0xFF000000U | value * 0x010101U; };
    for (size_t y = 0; y < ShownHeight; ++y) {
        const uint8_t *row = frame + (3 * y + 1) / 2 * Width;
        for (const uint32_t *end = shown + ShownWidth; shown != end; shown += 2, row += 3) {
            shown[0] = grey(row[0]);
            shown[1] = grey(row[2]);
        }
    }
}

void frames(int fd, uint8_t code, double duration)
{
    const size_t count = code == 3 ? 2 : 1;
    Bytes reply(MaxReply);
    Bytes copy(count * FrameSize);
    std::vector<uint32_t> shown(ShownWidth * ShownHeight);
    uint64_t sum = 0;
    int fetched = 0;
    const double processorBefore = processorSeconds();
    const auto begin = Clock::now();
    while (seconds(Clock::now() - begin) < duration) {
        exchange(fd, request({code}), &reply);
        std::memcpy(copy.data(), reply.data() + 5, copy.size());
        for (size_t i = 0; i < count; ++i) {
            scale(copy.data() + i * FrameSize, shown.data());
            sum += shown[size_t(fetched) % shown.size()];
        }
        ++fetched;
        usleep(FramePause);
    }
    const double taken = seconds(Clock::now() - begin);
    std::printf("frames %d\nfps %.3f\nprocessor_us %.2f\nsum %llu\n", fetched, fetched / taken,
                (processorSeconds() - processorBefore) / fetched * 1e6, (unsigned long long)sum);
}

void append(std::string &lines, const uint8_t *record, size_t offset)
{
    const auto *text = reinterpret_cast<const char *>(record) + offset;
    lines.append(text, strnlen(text, RecordSize - offset));
}

void appendLine(std::string &lines, uint32_t index, const uint8_t *record)
{
    char number[16];
    lines += "Index";
    lines.append(number, std::to_chars(number, std::end(number), index).ptr);
    lines += ": (";
    append(lines, record, 4);
    lines += ", ";
    append(lines, record, 20);
    lines += record[0] == 0 ? ", Palm, " : ", Card, ";
    append(lines, record, 36);
    lines += ", ";
    append(lines, record, 68);
    lines += ")\n";
}

Bytes pageRequest(int year, int month, uint32_t first)
{
    const auto octet = [first](int shift) { return uint8_t(first >> shift); };
    return request({0x43, uint8_t(year >> 8), uint8_t(year), uint8_t(month), octet(24), octet(16),
                    octet(8), octet(0)});
}

void exportMonth(int fd, int year, int month, const char *path)
{
    Bytes reply(MaxReply);
    const auto begin = Clock::now();
    FILE *file = std::fopen(path, "wb");
    if (!file)
        fail(path);
    std::string lines;
    size_t bytes = 0;
    uint32_t count = PageRecords;
    for (uint32_t first = 0; count == PageRecords; first += PageRecords) {
        exchange(fd, pageRequest(year, month, first), &reply);
        count = uint32_t(reply[6]) << 8 | reply[7];
        lines.clear();
        for (uint32_t i = 0; i < count; ++i)
            appendLine(lines, first + i, reply.data() + 8 + i * RecordSize);
        bytes += std::fwrite(lines.data(), 1, lines.size(), file);
    }
    std::fflush(file);
    fsync(fileno(file));
    std::fclose(file);
    std::printf("seconds %.5f\nbytes %zu\n", seconds(Clock::now() - begin), bytes);
}

} // namespace

int main(int argc, char *argv[])
{
    const std::string what = argc > 1 ? argv[1] : "";
    const auto number = [&](int index) { return index < argc ? std::atoi(argv[index]) : 0; };
    const int fd = connectTo(uint16_t(number(2)));
    if (what == "round-trips" && argc == 4)
        roundTrips(fd, number(3));
    else if (what == "frames" && argc == 5)
        frames(fd, uint8_t(number(3)), std::atof(argv[4]));
    else if (what == "export" && argc == 6)
        exportMonth(fd, number(3), number(4), argv[5]);
    else if (what == "frame-ceiling" && argc == 5)
        ceiling(fd, request({uint8_t(number(3))}), 1, std::atof(argv[4]));
    else if (what == "record-ceiling" && argc == 6)
        ceiling(fd, pageRequest(number(3), number(4), 0), PageRecords, std::atof(argv[5]));
    else
        return 2;
    close(fd);
    return 0;
}
