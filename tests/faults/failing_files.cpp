// Preloaded into a program, it makes calls fail on all files whose path contains
// PELMARK_FAULT_FILE:
//
// PELMARK_FAULT_READ       reading fails after so many bytes;
// PELMARK_FAULT_OPEN       opening for reading finds no file after so many times;
// PELMARK_FAULT_BYTE       the process is killed after writing so many bytes in all, within a block
//                          if need be;
// PELMARK_FAULT_CALL       the process is killed before this call, counted from 0, of those that
//                          open such a file for writing, write to it, or give it its name;
// PELMARK_FAULT_TEMPORARY  no temporary file can be created: the value is the errno;
// PELMARK_FAULT_REPLACE    no file can be renamed onto another: the value is the errno. With EPERM,
//                          as in a sticky folder, O_CREAT is refused on existing files too.

#include <algorithm>
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

// By the file's current name.
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

// The errno with which opening a file for writing fails; 0 if it does not.
int openingFault(const char* path, int flags) {
    static const auto temporary = static_cast<int>(limitOf("PELMARK_FAULT_TEMPORARY"));
    static const long long replace = limitOf("PELMARK_FAULT_REPLACE");
    if ((flags & O_EXCL) != 0 || (flags & O_TMPFILE) == O_TMPFILE)
        return std::max(temporary, 0);
    return replace == EPERM && (flags & O_CREAT) != 0 && access(path, F_OK) == 0 ? EACCES : 0;
}

bool isGone() {
    static const long long limit = limitOf("PELMARK_FAULT_OPEN");
    static long long times = 0;
    return limit >= 0 && times++ >= limit;
}

int failure(int error) {
    errno = error;
    return -1;
}

} // namespace

extern "C" {

int open64(const char* path, int flags, ...) {
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = va_arg(arguments, mode_t);
    va_end(arguments);
    if (isWritable(flags) && isMeant(path)) {
        countCall();
        if (const int error = openingFault(path, flags); error != 0)
            return failure(error);
    }
    if (!isWritable(flags) && isMeant(path) && isGone())
        return failure(ENOENT);
    return next<int(const char*, int, ...)>("open64")(path, flags, mode);
}

ssize_t read(int file, void* bytes, size_t size) {
    static const long long limit = limitOf("PELMARK_FAULT_READ");
    static const auto really = next<ssize_t(int, void*, size_t)>("read");
    if (limit < 0 || !isMeant(file))
        return really(file, bytes, size);
    const long long place = lseek(file, 0, SEEK_CUR);
    if (place >= limit)
        return failure(EIO);
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
    static const auto error = static_cast<int>(limitOf("PELMARK_FAULT_REPLACE"));
    if (isMeant(to)) {
        countCall();
        if (error > 0)
            return failure(error);
    }
    return next<int(const char*, const char*)>("rename")(from, to);
}

} // extern "C"
