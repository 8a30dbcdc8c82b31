#ifndef GNSS_UTIL_SLEEP_H
#define GNSS_UTIL_SLEEP_H

// Sleeps for ms milliseconds; a signal does not cut the sleep short.
void SleepMs(int ms);

#endif
