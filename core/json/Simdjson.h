#pragma once

// The library's own checks follow the optimisation, and add members to its records: sources that are built differently
// would disagree on their layout. So they are off everywhere, and this is the only place that includes it for them.
#ifndef SIMDJSON_DEVELOPMENT_CHECKS
#define SIMDJSON_DEVELOPMENT_CHECKS 0
#endif
#include <simdjson.h>
