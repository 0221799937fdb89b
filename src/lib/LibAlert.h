// Alerts of the support library: a printf-style text shown modally with one
// "OK" button. The text is cut to 511 characters. Any thread that holds no
// window lock.
#ifndef LIB_ALERT_H
#define LIB_ALERT_H

// A warning alert.
void LibWarning(const char* format, ...) __attribute__((format(printf, 1, 2)));
// An information alert.
void LibInfo(const char* format, ...) __attribute__((format(printf, 1, 2)));
// A stop alert for errors.
void LibError(const char* format, ...) __attribute__((format(printf, 1, 2)));

#endif // LIB_ALERT_H
