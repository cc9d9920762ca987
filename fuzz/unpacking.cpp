// Packed and plain bytes, unpacked in large steps and in small ones: the same text, and the same
// error after it. Input: how many bytes to read at a time, the file.

#include "finding.h"
#include "input.h"
#include "unpacked.h"

#include <QBuffer>

namespace {

constexpr qsizetype mostBytes = 4 << 20; // a few packed bytes may stand for gigabytes

struct Unpacked {
    QByteArray text;
    QString packing, error;
};

Unpacked unpack(QByteArray file, qint64 step) {
    QBuffer packed(&file);
    packed.open(QIODevice::ReadOnly);
    UnpackedDevice device(packed);
    if (!device.open(QIODevice::ReadOnly))
        return {{}, {}, device.errorString()};
    Unpacked result{{}, device.packing(), {}};
    QByteArray block(step, '\0');
    while (result.text.size() < mostBytes) {
        const qint64 count =
            device.read(block.data(), std::min(step, mostBytes - result.text.size()));
        if (count < 0)
            result.error = device.errorString();
        if (count <= 0)
            break;
        result.text.append(block.constData(), count);
    }
    mustHold(result.error.isEmpty() || !result.error.contains(u'\0'), "readable error");
    return result;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    Input input(bytes, size);
    const int step = 1 + input.number<std::uint8_t>();
    const QByteArray file = input.rest();
    foreignKind(file);
    const Unpacked whole = unpack(file, 1 << 16), parted = unpack(file, step);
    mustHold(whole.text == parted.text, "text", QString::fromUtf8(whole.text),
             QString::fromUtf8(parted.text));
    mustHold(whole.packing == parted.packing && whole.error == parted.error, "packing or error",
             whole.error, parted.error);
    return 0;
}
