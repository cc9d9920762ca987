// Loaded into a program before its libraries, it stands between them and the machine, and lets the
// machine fail on demand for all files whose path contains PELMARK_FAULT_FILE:
//
// PELMARK_FAULT_READ    reading fails once so many bytes were read;
// PELMARK_FAULT_BYTE    the process is killed when so many bytes were written in all, a block that
//                       goes beyond that being written in part;
// PELMARK_FAULT_CALL    the process is killed before the so manieth call that opens such a file for
//                       writing, writes to it, or gives it its name, counted from 0.

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/limits.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

long long limitOf(const char* name) {
    const char* const text = std::getenv(name);
    return text != nullptr ? std::atoll(text) : -1;
}

bool isMeant(const std::string& path) {
    static const char* const part = std::getenv("PELMARK_FAULT_FILE");
    return part != nullptr && path.find(part) != std::string::npos;
}

bool isMeant(const char* path) {
    char folder[PATH_MAX + 1] = {};
    if (path[0] == '/' || getcwd(folder, PATH_MAX) == nullptr)
        return isMeant(std::string(path));
    return isMeant(folder + ('/' + std::string(path)));
}

// By the name under which the file was opened, or has come to have since.
bool isMeant(int file) {
    char path[PATH_MAX + 1] = {};
    const std::string link = "/proc/self/fd/" + std::to_string(file);
    return readlink(link.c_str(), path, PATH_MAX) > 0 && isMeant(std::string(path));
}

template <typename Function>
Function* next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

void die() {
    std::raise(SIGKILL);
}

void countCall() {
    static const long long last = limitOf("PELMARK_FAULT_CALL");
    static long long calls = 0;
    if (calls++ == last)
        die();
}

bool isWritable(int flags) {
    return (flags & O_ACCMODE) != O_RDONLY;
}

} // namespace

extern "C" {

int open64(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    if (isWritable(flags) && isMeant(path))
        countCall();
    return next<int(const char*, int, ...)>("open64")(path, flags, mode);
}

ssize_t read(int file, void* bytes, size_t size) {
    static const long long limit = limitOf("PELMARK_FAULT_READ");
    static const auto really = next<ssize_t(int, void*, size_t)>("read");
    if (limit < 0 || !isMeant(file))
        return really(file, bytes, size);
    const long long place = lseek(file, 0, SEEK_CUR);
    if (place >= limit) {
        errno = EIO;
        return -1;
    }
    const auto left = static_cast<size_t>(limit - place);
    return really(file, bytes, size < left ? size : left);
}

ssize_t write(int file, const void* bytes, size_t size) {
    static const long long limit = limitOf("PELMARK_FAULT_BYTE");
    static const auto really = next<ssize_t(int, const void*, size_t)>("write");
    static long long written = 0;
    if (!isMeant(file))
        return really(file, bytes, size);
    countCall();
    if (limit >= 0 && written + static_cast<long long>(size) > limit) {
        really(file, bytes, static_cast<size_t>(limit - written));
        die();
    }
    written += static_cast<long long>(size);
    return really(file, bytes, size);
}

int linkat(int fromFolder, const char* from, int toFolder, const char* to, int flags) {
    if (isMeant(to))
        countCall();
    return next<int(int, const char*, int, const char*, int)>("linkat")(fromFolder, from, toFolder,
                                                                        to, flags);
}

int rename(const char* from, const char* to) {
    if (isMeant(to))
        countCall();
    return next<int(const char*, const char*)>("rename")(from, to);
}

} // extern "C"
