#include "support/failing_device.h"

#include <algorithm>

FailingDevice::FailingDevice(const QByteArray& content, qint64 goodBytes)
    : m_content(content), m_goodBytes(goodBytes) {}

bool FailingDevice::seek(qint64 place) {
    m_place = place;
    return QIODevice::seek(place);
}

qint64 FailingDevice::readData(char* data, qint64 size) {
    if (m_place >= m_content.size())
        return 0;
    if (m_place >= m_goodBytes)
        return -1;
    const qint64 end = std::min({m_place + size, m_goodBytes, qint64(m_content.size())});
    const qint64 count = end - m_place;
    std::copy_n(m_content.begin() + m_place, count, data);
    m_place = end;
    return count;
}

qint64 FailingDevice::writeData(const char* data, qint64 size) {
    if (m_place + size > m_goodBytes)
        return -1;
    m_content.append(data, size);
    m_place += size;
    return size;
}
