#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <string_view>

// UTF-8 in which a lone surrogate, which text in UTF-16 may hold and strict UTF-8 can't, keeps a
// three-byte code of its own: so no two different texts become the same bytes.

void appendUtf8(QStringView text, QByteArray& bytes);
QString fromUtf8(std::string_view bytes);
