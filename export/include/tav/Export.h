#pragma once

// Symbols of libtqtav.so are hidden unless marked: the handle classes, the
// kernel interfaces and the free functions that users call carry this mark.
#define TAV_EXPORT __attribute__((visibility("default")))
