#pragma once

// Every record of the service's JSON API. Plain values; an absent optional is not sent, and a missing or null one reads
// as absent. Integers have 64 bits.

#include "VornMacCore/Wire/ErrorRecords.h"      // IWYU pragma: export
#include "VornMacCore/Wire/LinkingRecords.h"    // IWYU pragma: export
#include "VornMacCore/Wire/QuestRecords.h"      // IWYU pragma: export
#include "VornMacCore/Wire/SessionRecords.h"    // IWYU pragma: export
#include "VornMacCore/Wire/SubmissionRecords.h" // IWYU pragma: export
