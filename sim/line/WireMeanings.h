#ifndef GNSS_SIM_LINE_WIREMEANINGS_H
#define GNSS_SIM_LINE_WIREMEANINGS_H

namespace GnssSim {

// How the meanings of the wire log's lines begin, where its readers (the summary, the timeline)
// tell the lines apart by them. The simulator writes them from here, so that a rewording reaches
// every reader.

// heard: a line the receiver heard at its own speed, then what it made of it ("line: <OK").
inline constexpr char kMeaningLine[] = "line: ";
// heard: a line spoilt by noise that arrived earlier on it.
inline constexpr char kMeaningGarbledLine[] = "garbled line: ";
// heard: bytes that arrived at another speed than the receiver's ("noise: line at 9600, ...").
inline constexpr char kMeaningNoise[] = "noise: ";
// heard: bytes that arrived while the receiver was restarting.
inline constexpr char kMeaningLost[] = "lost: ";
// heard: a binary packet ("packet 110: sum ok").
inline constexpr char kMeaningPacket[] = "packet ";

// out: the receiver sent at another speed than the line's; after the speeds, "): " and what it
// meant to send ("noise (line at 9600, receiver at 115200): <OK").
inline constexpr char kMeaningOutNoise[] = "noise (";
inline constexpr char kMeaningOutNothing[] = "nothing reaches the tool (";
inline constexpr char kMeaningMeantToSend[] = "): ";
// out: sent unasked, a log the receiver was told to stream ("log GPGGA") or a flood's sentence.
inline constexpr char kMeaningStreamedLog[] = "log ";
inline constexpr char kMeaningFlood[] = "flood ";

// event: the receiver begins a restart, and is back from it.
inline constexpr char kMeaningRestarting[] = "restarting after ";
inline constexpr char kMeaningBackFromRestart[] = "back from the restart";
// event: the command run against the line has ended ("the command ended with status 0").
inline constexpr char kMeaningCommandEnded[] = "the command ended";

}

#endif
