#ifndef SEARCHPATH_HOST_DURATION_H
#define SEARCHPATH_HOST_DURATION_H

// Durations and points in time, without the calendars and formats of <chrono>: compiling these took
// a seventh of the time of "searchpath/host/environment.h".
#if __has_include(<bits/chrono.h>)
#include <bits/chrono.h>
#else
#include <chrono>
#endif

#endif  // SEARCHPATH_HOST_DURATION_H
