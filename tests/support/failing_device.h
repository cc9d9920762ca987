#pragma once

#include <QByteArray>
#include <QIODevice>

// A file that works for its first `goodBytes` bytes and fails from then on, in reading as in
// writing: a disk that breaks, or that is full.
class FailingDevice : public QIODevice {
public:
    FailingDevice(const QByteArray& content, qint64 goodBytes);

    qint64 size() const override { return m_content.size(); }
    bool seek(qint64 place) override;

protected:
    qint64 readData(char* data, qint64 size) override;
    qint64 writeData(const char* data, qint64 size) override;

private:
    QByteArray m_content;
    qint64 m_goodBytes;
    qint64 m_place = 0;
};
