#pragma once

#include <QByteArray>
#include <QString>
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>

// Decodes an input of the fuzzer from front to back. Past the end it yields zeros.
class Input {
public:
    Input(const std::uint8_t* bytes, std::size_t size)
        : m_bytes(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(size)) {}

    bool isAtEnd() const { return m_place >= m_bytes.size(); }

    template <typename Number>
    Number number() {
        Number number{};
        const QByteArray bytes = take(sizeof number);
        std::memcpy(&number, bytes.constData(), static_cast<std::size_t>(bytes.size()));
        return number;
    }

    // At least 0 and below `end`.
    int below(int end) { return number<std::uint8_t>() % end; }
    bool flag() { return below(2) == 1; }

    // One byte for the length, then the text in UTF-8.
    QString shortText() { return QString::fromUtf8(take(number<std::uint8_t>())); }
    QByteArray rest() { return take(m_bytes.size()); }

private:
    QByteArray take(qsizetype count) {
        const QByteArray bytes = m_bytes.mid(m_place, count);
        m_place = std::min(m_place + count, m_bytes.size());
        return bytes;
    }

    QByteArray m_bytes;
    qsizetype m_place = 0;
};
