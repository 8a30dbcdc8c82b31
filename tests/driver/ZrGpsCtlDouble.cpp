// Stands in for the console's kernel GPS driver on a build machine, where /dev/zrgps_ctl does not
// exist. Preloaded into gnss-setup (or linked into a test), it lets opens of the control device
// succeed and writes every request made on them, with its argument, to the file named by
// ZRGPS_CTL_RECORD. Without that variable the device stays missing. Everything else passes
// through to the C library.
//
// The request numbers are written out here on purpose, apart from the tool's own: a wrong number
// in the tool shows up as an unknown request in the record.

#include <dlfcn.h>
#include <fcntl.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <set>
#include <string>

namespace {

constexpr const char* kControlDevice = "/dev/zrgps_ctl";
constexpr int kTextBufferSize = 60;

struct KnownRequest {
    unsigned long number;
    const char* name;
    bool carriesText;
};

constexpr KnownRequest kKnownRequests[] = {
    {0x403CBC6DUL, "ZRGPS_IOCS_SET_RECEIVER_VER", true},
    {0x0000BC6CUL, "ZRGPS_IOCT_SET_RECEIVER_TYPE", false},
    {0x403CBC70UL, "ZRGPS_IOCS_SET_RECEIVER_MODEL", true},
    {0x403CBC71UL, "ZRGPS_IOCS_SET_EXTENDED_VER", true},
};

std::mutex g_lock;
std::set<int> g_controlFds;

using OpenFunction = int (*)(const char*, int, ...);
using IoctlFunction = int (*)(int, unsigned long, ...);
using CloseFunction = int (*)(int);

template <typename Function>
Function Real(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

const char* RecordPath()
{
    return getenv("ZRGPS_CTL_RECORD");
}

void Record(const std::string& line)
{
    FILE* file = fopen(RecordPath(), "a");
    if (file != nullptr) {
        fputs(line.c_str(), file);
        fputc('\n', file);
        fclose(file);
    }
}

// The text as far as its NUL, with anything unprintable shown as \xNN.
std::string QuotedText(const char* buffer)
{
    std::string text = "\"";
    for (const char* c = buffer; c < buffer + kTextBufferSize && *c != '\0'; ++c) {
        const auto byte = static_cast<unsigned char>(*c);
        if (byte >= 0x20 && byte < 0x7F && byte != '"' && byte != '\\') {
            text += *c;
        } else {
            char escaped[8];
            snprintf(escaped, sizeof escaped, "\\x%02X", byte);
            text += escaped;
        }
    }
    return text + "\"";
}

std::string Describe(unsigned long request, uintptr_t argument)
{
    for (const KnownRequest& known : kKnownRequests) {
        if (known.number != request) {
            continue;
        }
        if (!known.carriesText) {
            return std::string(known.name) + " " + std::to_string(static_cast<int>(argument));
        }
        const char* buffer = reinterpret_cast<const char*>(argument);
        return std::string(known.name) + " " + QuotedText(buffer) +
               (buffer[kTextBufferSize - 1] == '\0' ? "" : " (byte 59 not NUL)");
    }
    char unknown[64];
    snprintf(unknown, sizeof unknown, "unknown request 0x%08lX", request);
    return unknown;
}

bool IsControlDevice(const char* path)
{
    return path != nullptr && strcmp(path, kControlDevice) == 0 && RecordPath() != nullptr;
}

int OpenControlDouble(int flags)
{
    const int fd = Real<OpenFunction>("open")("/dev/null", O_RDWR);
    if (fd >= 0) {
        const std::lock_guard<std::mutex> guard(g_lock);
        g_controlFds.insert(fd);
        Record(std::string("open ") + ((flags & O_ACCMODE) == O_RDWR ? "O_RDWR" : "not O_RDWR"));
    }
    return fd;
}

int OpenThrough(const char* name, const char* path, int flags, va_list args)
{
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        mode = static_cast<mode_t>(va_arg(args, int));
    }
    if (IsControlDevice(path)) {
        return OpenControlDouble(flags);
    }
    return Real<OpenFunction>(name)(path, flags, mode);
}

bool IsControlFd(int fd)
{
    const std::lock_guard<std::mutex> guard(g_lock);
    return g_controlFds.count(fd) > 0;
}

}  // namespace

extern "C" {

int open(const char* path, int flags, ...)
{
    va_list args;
    va_start(args, flags);
    const int fd = OpenThrough("open", path, flags, args);
    va_end(args);
    return fd;
}

int open64(const char* path, int flags, ...)
{
    va_list args;
    va_start(args, flags);
    const int fd = OpenThrough("open64", path, flags, args);
    va_end(args);
    return fd;
}

int ioctl(int fd, unsigned long request, ...)
{
    va_list args;
    va_start(args, request);
    const auto argument = reinterpret_cast<uintptr_t>(va_arg(args, void*));
    va_end(args);
    if (IsControlFd(fd)) {
        Record("ioctl " + Describe(request, argument));
        return 0;
    }
    return Real<IoctlFunction>("ioctl")(fd, request, argument);
}

int close(int fd)
{
    {
        const std::lock_guard<std::mutex> guard(g_lock);
        g_controlFds.erase(fd);
    }
    return Real<CloseFunction>("close")(fd);
}

}  // extern "C"
