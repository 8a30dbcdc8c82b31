#ifndef GNSS_RECEIVERS_NOVATEL_LOGREPLIES_H
#define GNSS_RECEIVERS_NOVATEL_LOGREPLIES_H

#include <string>
#include <vector>

// Parsers of the two list logs that the receiver sends on request. Pure functions; they never
// throw.
namespace NovatelCommon {

// The channel configuration in use from a "#CHANCONFIGLIST" reply (its first body field), or -1
// when the reply is not such a log or that field is missing or not a number.
int ParseChannelConfigReply(const std::string& reply);

// The model names of a "#VALIDMODELSA" reply in the receiver's order, each without its quotes
// (a field too short to hold a quoted name is kept as it is). A reply of the wrong shape gives no
// names; a model count that is not a number gives none; a count larger than the fields present
// gives the names that are there.
std::vector<std::string> ParseValidModelsReply(const std::string& reply);

}  // namespace NovatelCommon

#endif
