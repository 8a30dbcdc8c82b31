#ifndef GNSS_RECEIVERS_RECEIVERTYPE_H
#define GNSS_RECEIVERS_RECEIVERTYPE_H

#include <string>

// Receiver type numbers, shared by the command line, detection, the configurers and the kernel
// driver hand-over. Any number above Uninitialized is bogus.
namespace ReceiverType {

constexpr int Novatel = 0;  // the receivers that answer the "$PMCAG" probe
constexpr int CSI = 1;
constexpr int V1 = 2;
constexpr int OemStar = 3;
constexpr int OemStarG = 4;
constexpr int Oem6 = 5;
constexpr int Oem7500 = 6;
constexpr int Oem7700 = 7;
constexpr int Other = 8;
constexpr int Unknown = 9;
constexpr int Uninitialized = 10;

}  // namespace ReceiverType

// The printed name of a type number: "Novatel" ... "Uninitialized", "BogusGPSType" above 10.
const char* GetReceiverTypeName(int type);

// The type number of a printed name, compared exactly and case-sensitively; 9 ("Unknown") when no
// name is equal.
int ReceiverTypeFromName(const std::string& name);

#endif
