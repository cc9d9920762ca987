#include "input/association_file.h"

#include <QFileDevice>
#include <algorithm>

namespace {

std::optional<QChar> delimiterOf(const QString& firstLine) {
    for (const QChar delimiter : {u'\t', u' ', u','})
        if (firstLine.contains(delimiter))
            return delimiter;
    return std::nullopt;
}

bool isNumeric(const QString& field) {
    bool isInteger = false, isReal = false;
    field.toInt(&isInteger);
    field.toDouble(&isReal);
    return isInteger || isReal;
}

template <typename Test>
qsizetype firstWhere(const QStringList& titles, Test test) {
    const auto found = std::find_if(titles.begin(), titles.end(), test);
    return found == titles.end() ? -1 : found - titles.begin();
}

bool mentions(const QString& title, const char* word) {
    return title.contains(QLatin1String(word), Qt::CaseInsensitive);
}

bool hadReadError(const QIODevice& device) {
    const auto* file = qobject_cast<const QFileDevice*>(&device);
    return file && file->error() != QFileDevice::NoError;
}

} // namespace

AssociationFile::AssociationFile(QIODevice& file) : m_file(file) {}

// The words are searched for loosely because every tool titles its columns in its own way.
AssociationFile::Columns AssociationFile::findColumns(const QStringList& titles) {
    Columns columns;
    columns.position =
        firstWhere(titles, [](const QString& title) { return mentions(title, "pos"); });
    columns.pValue = firstWhere(titles, [](const QString& title) {
        return mentions(title, "pval") || mentions(title, "p-val") || title == u"P" ||
               title == u"p";
    });
    columns.chromosome = firstWhere(titles, [](const QString& title) {
        return mentions(title, "chr") || mentions(title, "some") || mentions(title, "id");
    });
    return columns;
}

std::optional<Fault> AssociationFile::open() {
    if (!m_file.open(QIODevice::ReadOnly | QIODevice::Text))
        return Fault::CannotOpenFile;
    m_text.setDevice(&m_file);
    m_text.setEncoding(QStringConverter::System);
    if (m_text.atEnd())
        return std::nullopt;

    const QString firstLine = m_text.readLine();
    if (hadReadError(m_file))
        return Fault::CannotOpenFile;
    const std::optional<QChar> delimiter = delimiterOf(firstLine);
    if (!delimiter)
        return Fault::UnknownDelimiter;
    m_delimiter = *delimiter;
    const QStringList fields = firstLine.split(m_delimiter);
    if (fields.size() < 3)
        return Fault::TooFewColumns;
    if (std::all_of(fields.begin(), fields.end(), isNumeric)) {
        m_text.seek(0);
        return std::nullopt;
    }
    m_columns = findColumns(fields);
    if (std::min({m_columns.chromosome, m_columns.position, m_columns.pValue}) < 0)
        return Fault::IncorrectColumns;
    return std::nullopt;
}

bool AssociationFile::next(Record& record) {
    QString line;
    while (line.isEmpty()) {
        if (m_text.atEnd())
            break;
        line = m_text.readLine();
    }
    if (hadReadError(m_file))
        m_fault = Fault::CannotOpenFile;
    if (m_fault || line.isEmpty())
        return false;
    const QStringList fields = line.split(m_delimiter);
    if (fields.size() <= std::max({m_columns.chromosome, m_columns.position, m_columns.pValue})) {
        m_fault = Fault::IncorrectColumns;
        return false;
    }
    record = {fields[m_columns.chromosome], fields[m_columns.position], fields[m_columns.pValue]};
    return true;
}
