#pragma once

#include <QByteArray>

// Opens a new temporary file in the folder, for reading and writing, that no name leads to: it is
// gone once it is closed, whatever ends the program. Returns its descriptor; -1, with errno, where
// it cannot be made.
int openNamelessFile(const QByteArray& folder);

// The folder for temporary files.
QByteArray temporaryFolder();

// A temporary file that is put in place of another by its name. It is removed with this object and
// at a signal that ends the program (interrupt, termination, hang-up, broken pipe).
class NamedTemporaryFile {
public:
    // Beside `path`, under its name with an addition. isOpen() says whether that was possible.
    explicit NamedTemporaryFile(const QByteArray& path);
    ~NamedTemporaryFile();
    NamedTemporaryFile(const NamedTemporaryFile&) = delete;
    NamedTemporaryFile& operator=(const NamedTemporaryFile&) = delete;

    bool isOpen() const { return m_descriptor >= 0; }
    int descriptor() const { return m_descriptor; } // stays open until this object is destroyed

    // Gives the file the name of `path`, in place of what had it. False, with errno, on failure.
    bool putInPlace(const QByteArray& path);

private:
    void forget();

    int m_descriptor = -1;
    int m_slot = -1; // in the list of what a signal removes
};
