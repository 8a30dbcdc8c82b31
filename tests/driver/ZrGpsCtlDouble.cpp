// Stands in for the console's kernel GPS driver on a build machine, where /dev/zrgps_ctl does not
// exist. Preloaded into gnss-setup (or linked into a test), it lets opens of the control device
// succeed while ZRGPS_CTL_RECORD names a file, and writes every open and every request made on
// them, with its argument, to that file. Without the variable the device stays missing.
// Everything else passes through to the C library.
//
// The request numbers are written out here on purpose, apart from the tool's own: a wrong number
// in the tool shows up as an unknown request in the record.

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

constexpr int kTextBufferSize = 60;

const char* RequestName(unsigned long request)
{
    switch (request) {
    case 0x403CBC6DUL: return "ZRGPS_IOCS_SET_RECEIVER_VER";
    case 0x403CBC71UL: return "ZRGPS_IOCS_SET_EXTENDED_VER";
    case 0x403CBC70UL: return "ZRGPS_IOCS_SET_RECEIVER_MODEL";
    case 0x0000BC6CUL: return "ZRGPS_IOCT_SET_RECEIVER_TYPE";  // the one passed by value
    default: return nullptr;
    }
}

// The text as far as its NUL, with anything unprintable shown as \xNN.
std::string QuotedText(const char* buffer)
{
    std::string text = "\"";
    for (int i = 0; i < kTextBufferSize && buffer[i] != '\0'; ++i) {
        const auto byte = static_cast<unsigned char>(buffer[i]);
        const bool plain = byte >= 0x20 && byte < 0x7F && byte != '"' && byte != '\\';
        char shown[8];
        (void)snprintf(shown, sizeof shown, plain ? "%c" : "\\x%02X", byte);
        text += shown;
    }
    return text + (buffer[kTextBufferSize - 1] == '\0' ? "\"" : "\" (byte 59 not NUL)");
}

// An opened control device is the record itself, opened for appending, so a request is one on
// the control device when its descriptor is that file, and a closed one needs no bookkeeping.
bool IsControlDevice(int fd)
{
    const char* record = getenv("ZRGPS_CTL_RECORD");
    struct stat opened {};
    struct stat recorded {};
    return record != nullptr && fstat(fd, &opened) == 0 && stat(record, &recorded) == 0 &&
           opened.st_dev == recorded.st_dev && opened.st_ino == recorded.st_ino;
}

}  // namespace

extern "C" {

// open64 is the same function under the name that a build with 64-bit file offsets calls; both
// pass through to the C library's open64, which differs from open only in allowing large files.
int open(const char* path, int flags, ...)
{
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list args;
        va_start(args, flags);
        // The analyser loses the va_start of a variadic function with C linkage on the line above.
        // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
        mode = static_cast<mode_t>(va_arg(args, int));
        va_end(args);
    }
    using Open = int (*)(const char*, int, ...);
    const auto realOpen = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "open64"));
    const char* record = getenv("ZRGPS_CTL_RECORD");
    if (record == nullptr || strcmp(path, "/dev/zrgps_ctl") != 0) {
        return realOpen(path, flags, mode);
    }
    const int fd = realOpen(record, O_WRONLY | O_APPEND | O_CREAT, 0644);
    if (fd >= 0) {
        dprintf(fd, "open %s\n", (flags & O_ACCMODE) == O_RDWR ? "O_RDWR" : "not O_RDWR");
    }
    return fd;
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));

int ioctl(int fd, unsigned long request, ...)
{
    va_list args;
    va_start(args, request);
    void* const argument = va_arg(args, void*);
    va_end(args);
    if (!IsControlDevice(fd)) {
        using Ioctl = int (*)(int, unsigned long, ...);
        return reinterpret_cast<Ioctl>(dlsym(RTLD_NEXT, "ioctl"))(fd, request, argument);
    }
    const char* name = RequestName(request);
    if (name == nullptr) {
        dprintf(fd, "ioctl unknown request 0x%08lX\n", request);
    } else if (request == 0x0000BC6CUL) {
        dprintf(fd, "ioctl %s %d\n", name, static_cast<int>(reinterpret_cast<intptr_t>(argument)));
    } else {
        dprintf(fd, "ioctl %s %s\n", name, QuotedText(static_cast<const char*>(argument)).c_str());
    }
    return 0;
}

}  // extern "C"
