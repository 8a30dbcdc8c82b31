#ifndef GNSS_SIM_RECEIVERFACTORY_H
#define GNSS_SIM_RECEIVERFACTORY_H

#include "sim/SimOptions.h"
#include "sim/model/ReceiverModel.h"

#include <memory>
#include <string>

namespace GnssSim {

// The setup of the receiver the options name, with the receiver's own identity, models and
// channel configurations where the options leave them out; false for a receiver name the
// simulator does not know (the setup is then that of the silent receiver).
bool MakeReceiverSetup(const SimOptions& options, TimePoint start, ReceiverSetup& setup, std::string& error);

// The model of the setup's family.
std::unique_ptr<ReceiverModel> MakeReceiverModel(const ReceiverSetup& setup, ReceiverLine& line);

}

#endif
