#ifndef GNSS_SERIAL_COMPORTERROR_H
#define GNSS_SERIAL_COMPORTERROR_H

// Result codes of the serial port operations. 0 is success; the values are compared by every
// caller and must not change. 104, 107 and 113 are never produced.
enum ComPortError : int {
    COMERR_OPEN = 100,             // open() of the device failed
    COMERR_CLOSE_NOT_OPEN = 101,   // Close on a port that is not open
    COMERR_NOT_OPEN = 102,         // read, write or flush on a port that is not open
    COMERR_FLUSH = 103,            // tcflush failed; fixed answer of one unsupported operation
    COMERR_TIMEOUT = 105,          // ReadByte saw no byte in time, or its wait was interrupted
    COMERR_READ = 106,             // read() failed; fixed answer of unsupported read operations
    COMERR_BUFFER_FULL = 108,      // ReadUntil filled the caller's buffer
    COMERR_WRITE = 109,            // write() failed or was short; answer of unsupported writes
    COMERR_UNSUPPORTED = 110,      // not supported by this port; also a failed tcgetattr
    COMERR_BAUD = 111,             // rate not mappable, or speed/attributes not applied
    COMERR_NOT_IMPLEMENTED = 112,  // not implemented by this port
    COMERR_NUL_RECEIVED = 114,     // ReadUntil received a NUL byte
};

#endif
