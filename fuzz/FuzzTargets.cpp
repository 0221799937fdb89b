#include "FuzzEntries.h"

const FuzzTarget kFuzzTargets[] = {
    {"record", FuzzRecord},
    {"results_file", FuzzResultsFile},
    {"store_message", FuzzStoreMessage},
    {"help_file", FuzzHelpFile},
    {"system_info", FuzzSystemInfo},
    {"pci_devices", FuzzPciDevices},
    {"os_release", FuzzOsRelease},
    {"cli_numbers", FuzzCliNumbers},
};
const size_t kFuzzTargetCount = sizeof(kFuzzTargets) / sizeof(kFuzzTargets[0]);
