#pragma once

// The contract between generated code and this runtime. Generated headers name the
// version they were written for and refuse to compile against any other; raise it
// whenever the bases, the helpers or the casts change what generated code relies on.
#define TAV_FAMILY_RUNTIME_VERSION 1
