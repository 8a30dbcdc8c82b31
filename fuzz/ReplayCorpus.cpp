// Feeds every file of the folders named on the command line to the fuzz target once, so that the
// seed corpus is a regression test in builds without libFuzzer.
#include <dirent.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

int ReplayFolder(const std::string& folder)
{
    DIR* directory = opendir(folder.c_str());
    if (directory == nullptr) {
        std::perror(folder.c_str());
        return 0;
    }
    int replayed = 0;
    for (;;) {
        errno = 0;  // the replay itself may leave errno set; only readdir's own failure counts
        // The replay runs on one thread, so readdir's shared buffer is safe.
        const dirent* entry = readdir(directory);  // NOLINT(concurrency-mt-unsafe)
        if (entry == nullptr) {
            break;
        }
        if (entry->d_name[0] == '.') {
            continue;
        }
        std::ifstream file(folder + "/" + entry->d_name, std::ios::binary);
        const std::vector<char> bytes((std::istreambuf_iterator<char>(file)),
                                      std::istreambuf_iterator<char>());
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
        ++replayed;
    }
    if (errno != 0) {
        // A folder that cannot be read to the end must fail the replay, not look empty.
        std::perror(folder.c_str());
        replayed = 0;
    }
    closedir(directory);
    return replayed;
}

}  // namespace

int main(int argc, char** argv)
{
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        replayed += ReplayFolder(argv[i]);
    }
    std::printf("replayed %d inputs\n", replayed);
    return replayed > 0 ? 0 : 1;
}
