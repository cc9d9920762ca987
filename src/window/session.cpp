#include "session.h"

#include "chromosome_walk.h"
#include "plot_texts.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

namespace {

constexpr qsizetype proposedNameBytes = 50;

// Copies the first `bytes` bytes of a text and fills the rest of them with zeros. A text of that
// length or more is left without a zero after it.
void copyPadded(char* buffer, qsizetype bytes, const QString& text) {
    const QByteArray local = text.toLocal8Bit().left(bytes);
    std::fill(std::copy(local.begin(), local.end(), buffer), buffer + bytes, '\0');
}

template <std::size_t size>
QString textIn(const char (&buffer)[size]) {
    return QString::fromLocal8Bit(buffer, static_cast<qsizetype>(qstrnlen(buffer, size)));
}

// A list keeps its memory, which costs less to write again than new memory costs to clear.
template <typename T>
void copyInto(QList<T>& target, const QList<T>& source) {
    target.clear();
    target.append(source);
}

} // namespace

void setDataFile(const QString& path) {
    copyPadded(filename, sizeof filename, path);
    if (filename[0] != '\0')
        copyPadded(shortname, titleNameBytes, QFileInfo(path).fileName());
}

QString dataFilePath() {
    return textIn(filename);
}

QString dataFileShortName() {
    return textIn(shortname);
}

void setProposedName(const QString& name) {
    copyPadded(defaultname, proposedNameBytes, name);
}

QString proposedName() {
    return textIn(defaultname);
}

PlotGeometry sessionGeometry() {
    return {fwidth, fheight, xmargin,  xmargin2, ymargin,  minX,    maxX,
            minY,   maxY,    realMinX, realMaxX, realMaxY, pixPerX, pixPerY};
}

void setSessionGeometry(const PlotGeometry& geometry) {
    fwidth = geometry.width;
    fheight = geometry.height;
    xmargin = geometry.xMargin;
    xmargin2 = geometry.xMargin2;
    ymargin = geometry.yMargin;
    minX = geometry.minX;
    maxX = geometry.maxX;
    minY = geometry.minY;
    maxY = geometry.maxY;
    realMinX = geometry.realMinX;
    realMaxX = geometry.realMaxX;
    realMaxY = geometry.realMaxY;
    pixPerX = geometry.pixPerX;
    pixPerY = geometry.pixPerY;
}

void keepGenomeScale() {
    GLOBAL_minX = minX;
    GLOBAL_maxX = maxX;
    GLOBAL_pixPerX = pixPerX;
    GLOBAL_pixPerY = pixPerY;
}

void restoreGenomeScale() {
    pixPerX = GLOBAL_pixPerX;
    pixPerY = GLOBAL_pixPerY;
    minX = GLOBAL_minX;
    maxX = GLOBAL_maxX;
}

QList<Chromosome> sessionChromosomes() {
    QList<Chromosome> chromosomes;
    chromosomes.reserve(Tag.size());
    for (qsizetype i = 0; i < Tag.size(); ++i) {
        const qsizetype firstPoint = i == 0 ? 0 : End_index[i - 1];
        chromosomes.append(
            {Tag[i], firstPoint, Start_index[i], End_index[i], Start_value[i], End_value[i]});
    }
    return chromosomes;
}

void setSessionChromosomes(const QList<Chromosome>& chromosomes) {
    Tag.clear();
    for (QVector<int>* list : {&Start_index, &End_index, &Start_value, &End_value, &Color_value})
        list->clear();
    for (const Chromosome& chromosome : chromosomes) {
        Color_value.append(chromosomeRed(Tag.size()));
        Tag.append(chromosome.label);
        Start_index.append(chromosome.startIndex);
        End_index.append(chromosome.endIndex);
        Start_value.append(chromosome.startValue);
        End_value.append(chromosome.endValue);
    }
}

Points shownSet() {
    return {Pos_list, Value_list};
}

Points takeShownSet() {
    return {std::exchange(Pos_list, {}), std::exchange(Value_list, {})};
}

Points takeWorkingSet() {
    return {std::exchange(Pos_list2, {}), std::exchange(Value_list2, {})};
}

void setShownSet(const Points& points) {
    Pos_list = points.positions;
    Value_list = points.values;
}

void setWorkingSet(const Points& points) {
    Pos_list2 = points.positions;
    Value_list2 = points.values;
}

void copyShownToWorkingSet() {
    copyInto(Pos_list2, Pos_list);
    copyInto(Value_list2, Value_list);
}

void copyWorkingToShownSet() {
    copyInto(Pos_list, Pos_list2);
    copyInto(Value_list, Value_list2);
}

void forgetPoints() {
    setShownSet({});
    setWorkingSet({});
}
