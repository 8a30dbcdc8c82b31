#include "receivers/ReceiverProbe.h"

#include "receivers/novatel/OemV1Descendants.h"

ReceiverProbe::ReceiverProbe(CComPort& port) : port(port) {}

// Here, where the NovAtel configurer's type is complete, so that the probe can free it.
ReceiverProbe::~ReceiverProbe() = default;
