#pragma once

// The exit status of every command, by cause.
enum ExitStatus : int {
    StatusFine = 0,
    StatusNo = 1,            // the answer is no
    StatusWrongCall = 2,     // of the command line
    StatusUnreadable = 3,    // an input cannot be opened or read, or is damaged
    StatusUnwritable = 4,    // the output cannot be written
    StatusNotUnderstood = 5, // the table is not understood, or the user must choose
};
