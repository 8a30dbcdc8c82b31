// The wall clock of the program it is preloaded into, moved by an offset that it reads from a file
// on every call; the monotonic clock is left alone. It is the part of libfaketime that the clock
// step tests use, with libfaketime's variable and file format (FAKETIME_TIMESTAMP_FILE holding
// "+N" or "-N" seconds), for the ARM build: Debian's libfaketime:armhf brings a second ARM C
// library along, which qemu-arm's loader then mixes with the cross compiler's, and ARM programs
// crash. The native builds preload libfaketime itself.

#include <dlfcn.h>
#include <sys/time.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

long OffsetSeconds()
{
    const char* path = std::getenv("FAKETIME_TIMESTAMP_FILE");
    std::FILE* file = path == nullptr ? nullptr : std::fopen(path, "r");
    long offset = 0;
    if (file != nullptr) {
        if (std::fscanf(file, "%ld", &offset) != 1) {
            offset = 0;
        }
        (void)std::fclose(file);  // opened for reading: nothing is lost
    }
    return offset;
}

// The C library's function of that name, which this library's definition hides.
template <typename Function>
Function* Library(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" int clock_gettime(clockid_t clock, timespec* now) noexcept
{
    const int result = Library<int(clockid_t, timespec*)>("clock_gettime")(clock, now);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE)) {
        now->tv_sec += OffsetSeconds();
    }
    return result;
}

extern "C" int gettimeofday(timeval* now, void* zone) noexcept
{
    const int result = Library<int(timeval*, void*)>("gettimeofday")(now, zone);
    if (result == 0) {
        now->tv_sec += OffsetSeconds();
    }
    return result;
}

extern "C" time_t time(time_t* now) noexcept
{
    timeval wall{};
    gettimeofday(&wall, nullptr);
    if (now != nullptr) {
        *now = wall.tv_sec;
    }
    return wall.tv_sec;
}
