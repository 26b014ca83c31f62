#pragma once

// Every record of the service's JSON API. Plain values; an absent optional is left out of what is sent, and an optional
// that is missing or null reads as absent. Integers have 64 bits.

#include "VornMacCore/Wire/ErrorRecords.h"      // IWYU pragma: export
#include "VornMacCore/Wire/LinkingRecords.h"    // IWYU pragma: export
#include "VornMacCore/Wire/QuestRecords.h"      // IWYU pragma: export
#include "VornMacCore/Wire/SessionRecords.h"    // IWYU pragma: export
#include "VornMacCore/Wire/SubmissionRecords.h" // IWYU pragma: export
