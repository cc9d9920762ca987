#include "hfile.h"

#include "association_file.h"
#include "chromosome_load.h"
#include "genome_scan.h"
#include "int_arithmetic.h"
#include "plot_image.h"
#include "point_table.h"
#include "plot_painter.h"
#include "box.h"
#include "desktop_identity.h"
#include "readable_text.h"
#include "wait_cursor.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFrame>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QRubberBand>
#include <QScreen>
#include <algorithm>
#include <cstdlib>
#include <utility>

double realMaxY = 0.0;
int minX = -1;
int realMinX = 0;
int realMaxX = 0;
int line = 0;
int stripes = 0;
int globaldisplay = 1;
int globaltimes = 0;
int selected_chromosome = -1;
int save_counter = 0;
char defaultname[100] = "file";

char filename[200];
char shortname[50];
int file_index;
int click_times;
int stepOK;
int fwidth;
int fheight;
int xmargin;
int xmargin2;
int ymargin;
double pixPerX;
double pixPerY;
double GLOBAL_pixPerX;
double GLOBAL_pixPerY;
int GLOBAL_minX;
int GLOBAL_maxX;
double minY;
double maxY;
int maxX;

QList<double> Value_list;
QList<int> Pos_list;
QList<double> Value_list2;
QList<int> Pos_list2;
QFile errorfile;
QTextStream error_stream;
QVector<int> Start_index;
QVector<int> End_index;
QVector<int> Start_value;
QVector<int> End_value;
QVector<int> Color_value;
QStringList Tag;

namespace {

constexpr qsizetype shortnameBytes = 30;
constexpr qsizetype defaultnameBytes = 50;

// Every line is on disk as soon as it is written: a process that is killed leaves its whole log
// too.
template <typename... Texts>
void writeLog(const Texts&... texts) {
    (error_stream << ... << texts) << Qt::flush;
}

// The one way in which a fault ends the process.
[[noreturn]] void endProcess(const QString& lastWords) {
    writeLog(lastWords);
    std::exit(1);
}

[[noreturn]] void endProcess(Fault fault) {
    endProcess(message(fault) + u'\n');
}

template <typename T>
T valueOrEnd(Result<T> result) {
    if (const Fault* fault = std::get_if<Fault>(&result))
        endProcess(*fault);
    return std::get<T>(std::move(result));
}

// Starts the log anew. Without one there is nobody to tell anything to.
void restartLog() {
    errorfile.close();
    errorfile.setFileName(QStringLiteral("Pelmark_log.txt"));
    if (!errorfile.open(QIODevice::WriteOnly | QIODevice::Text))
        std::exit(1);
    error_stream.setDevice(&errorfile);
    error_stream.setEncoding(QStringConverter::System);
    writeLog("Pelmark 0.1 by the Pelmark authors\n\n");
}

// Copies a text's first `bytes` bytes and fills the rest of them with zeros: a text of that length
// or more has no zero behind it.
void copyPadded(char* buffer, qsizetype bytes, const QString& text) {
    const QByteArray local = text.toLocal8Bit().left(bytes);
    std::fill(std::copy(local.begin(), local.end(), buffer), buffer + bytes, '\0');
}

template <std::size_t size>
QByteArray textIn(const char (&buffer)[size]) {
    return QByteArray(buffer, static_cast<qsizetype>(qstrnlen(buffer, size)));
}

QString dataFileName() {
    return QString::fromLocal8Bit(textIn(filename));
}

QString shortText() {
    return QString::fromLocal8Bit(textIn(shortname));
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

Points shownSet() {
    return {Pos_list, Value_list};
}

// For whoever changes the points and sets them again: left shared, they would be copied first.
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

// Nobody needs the last points while others are read: their memory is free for those.
void forgetPoints() {
    setShownSet({});
    setWorkingSet({});
}

// A list keeps the memory that it has: to write there again costs less than to have the system
// clear new memory for it.
template <typename T>
void copyInto(QList<T>& target, const QList<T>& source) {
    target.clear();
    target.append(source);
}

// A chromosome's points are not shared by the two sets, so that each can be picked out in place.
void copyShownToWorkingSet() {
    copyInto(Pos_list2, Pos_list);
    copyInto(Value_list2, Value_list);
}

void copyWorkingToShownSet() {
    copyInto(Pos_list, Pos_list2);
    copyInto(Value_list, Value_list2);
}

PlotPoints firstPoints(const QList<int>& positions, const QList<double>& values, int count) {
    const auto size = static_cast<std::size_t>(count);
    return {std::span(positions).first(size), std::span(values).first(size)};
}

void setGround(QLabel* label, const QColor& color) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::Window, color);
    palette.setColor(QPalette::WindowText,
                     readableText(palette.color(QPalette::WindowText), color));
    label->setAutoFillBackground(true);
    label->setPalette(palette);
}

QPushButton* createButton(const char* text, const char* styleSheet) {
    auto* button = new QPushButton(QLatin1String(text));
    button->setStyleSheet(QLatin1String(styleSheet));
    return button;
}

QFrame* createSeparator() {
    auto* separator = new QLabel;
    separator->setFrameStyle(static_cast<int>(QFrame::HLine) | static_cast<int>(QFrame::Sunken));
    separator->setLineWidth(2);
    separator->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    return separator;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    setDesktopIdentity();
    MyWidget window;
    window.setWindowTitle(QStringLiteral("PELMARK 0.1 by the Pelmark authors"));
    window.move(5, 5);
    window.show();
    return QApplication::exec();
}

// ---- Shell: the window, its options, its two views

MyWidget::MyWidget(QWidget* parent) : QWidget(parent), startDir(QString()) {
    createLabels();
    createOptions();
    createButtons();
    rubberBand = new QRubberBand(QRubberBand::Rectangle, imageLabel);
    connectCommands();
    arrangeLayouts();
    describeWidgets();
    screenRect = QGuiApplication::primaryScreen()->geometry();
    startDir = QDir::current();
    checkBox2Action();
    getFilename();
}

MyWidget::~MyWidget() = default;

void MyWidget::createLabels() {
    imageLabel = new QLabel;
    setGround(imageLabel, QColor(150, 150, 150));
    nameLabel = new QLabel;
    nameLabel->setTextFormat(Qt::PlainText); // a file's name is not markup
    setGround(nameLabel, Qt::gray);
    hintLabel = new QLabel(
        QStringLiteral("HINT: Draw a box anywhere in/around a chromosome to select the chromsome"));
}

void MyWidget::createOptions() {
    checkBox1 = new QCheckBox;
    checkBox1->setChecked(false);
    checkBox2 = new QCheckBox;
    checkBox2->setChecked(true);
    rangeStartEdit = new QLineEdit;
    rangeEndEdit = new QLineEdit;
    for (QWidget* widget :
         std::initializer_list<QWidget*>{checkBox1, checkBox2, rangeStartEdit, rangeEndEdit})
        ensureVisibleFrame(*widget);
}

void MyWidget::createButtons() {
    newFileButton = createButton(
        "&New File", "background:lightblue; color: black; font-size:12px;font-weight:bold;");
    globalButton =
        createButton("&Global", "background:pink; color: black; font-size:12px;font-weight:bold;");
    unzoomButton =
        createButton("&Unzoom", "background:green; color: black; font-size:12px;font-weight:bold;");
    removeButton = createButton("&Remove Selection",
                                "background:green; color:black; font-size:12px;font-weight:bold;");
    saveButton =
        createButton("&Save", "background:orange; color: black; font-size:12px;font-weight:bold;");
    saveRemoveButton = createButton(
        "Save &and Remove", "background:orange; color:black; font-size:12px;font-weight:bold;");
    exitButton =
        createButton("&Exit", "background:darkred; color:white; font-size:12px;font-weight:bold;");
}

void MyWidget::connectCommands() {
    connect(newFileButton, &QPushButton::clicked, this, &MyWidget::getFilename);
    connect(globalButton, &QPushButton::clicked, this, &MyWidget::displayGlobal);
    connect(unzoomButton, &QPushButton::clicked, this, &MyWidget::showRemaining);
    connect(removeButton, &QPushButton::clicked, this, &MyWidget::removeSelection);
    connect(saveRemoveButton, &QPushButton::clicked, this, &MyWidget::saveAndRemove);
    connect(saveButton, &QPushButton::clicked, this, &MyWidget::Save);
    connect(exitButton, &QPushButton::clicked, qApp, &QCoreApplication::quit);
    connect(checkBox1, &QCheckBox::stateChanged, this, &MyWidget::checkBox1Action);
    connect(checkBox2, &QCheckBox::stateChanged, this, &MyWidget::checkBox2Action);
    // There is no such slot, and the toolkit says so at every start: a known warning, kept.
    connect(this, SIGNAL(getSize()), this, SLOT(reSize()));
}

void MyWidget::arrangeLayouts() {
    mainLayout = new QVBoxLayout;
    topLayout = new QHBoxLayout;
    topSpareLayout = new QHBoxLayout;
    imageLayout = new QVBoxLayout;
    middleLayout = new QVBoxLayout;
    middleSpareLayout = new QHBoxLayout;
    infoLayout = new QHBoxLayout;
    bottomLayout = new QHBoxLayout;
    buttonLayout = new QHBoxLayout;

    mainLayout->addLayout(topLayout);
    topLayout->addLayout(topSpareLayout);
    topLayout->addLayout(imageLayout);
    mainLayout->addLayout(middleLayout);
    middleLayout->addLayout(middleSpareLayout);
    middleLayout->addLayout(infoLayout);
    mainLayout->addLayout(bottomLayout);
    bottomLayout->addLayout(buttonLayout);

    imageLayout->addWidget(imageLabel);
    for (QWidget* widget : std::initializer_list<QWidget*>{nameLabel, createSeparator(), checkBox1,
                                                           hintLabel, checkBox2, createSeparator(),
                                                           rangeStartEdit, rangeEndEdit})
        infoLayout->addWidget(widget);
    for (QPushButton* button : {newFileButton, globalButton, unzoomButton, removeButton, saveButton,
                                saveRemoveButton, exitButton})
        buttonLayout->addWidget(button);
    setLayout(mainLayout);
}

// The widgets that make sense for one chromosome only.
QList<QWidget*> MyWidget::chromosomeViewWidgets() const {
    return {checkBox1,    checkBox2,        globalButton,   unzoomButton,
            removeButton, saveRemoveButton, rangeStartEdit, rangeEndEdit};
}

void MyWidget::displayLocal() {
    globaldisplay = 0;
    for (QWidget* widget : chromosomeViewWidgets())
        widget->show();
    hintLabel->setText(QString());
}

void MyWidget::displayGlobal() {
    if (Tag.size() <= 1)
        return;
    imageLabel->setPixmap(genomePixmap);
    globaldisplay = 1;
    for (QWidget* widget : chromosomeViewWidgets())
        widget->hide();
    hintLabel->setText(
        QStringLiteral("HINT: Draw a box in or around a chromosome to select an entire chromsome"));
}

void MyWidget::reloadPhoto() {
    displayLocal();
    plotPixmap = plot(Pos_list, Value_list, static_cast<int>(Pos_list.size()));
    plotImage = plotPixmap.toImage();
    imageLabel->setPixmap(plotPixmap);
    nameLabel->setText(shortText());
}

void MyWidget::reloadPhoto0() {
    genomePixmap = plot0(Pos_list, Value_list, static_cast<int>(Pos_list.size()));
    nameLabel->setText(shortText());
    displayGlobal();
}

void MyWidget::checkBox1Action() {
    if (checkBox1->checkState() == Qt::Unchecked)
        line = 0;
    else if (checkBox1->checkState() == Qt::Checked)
        line = 1;
    reloadPhoto();
}

void MyWidget::checkBox2Action() {
    if (checkBox2->checkState() == Qt::Unchecked)
        stripes = 0;
    else if (checkBox2->checkState() == Qt::Checked)
        stripes = 1;
    reloadPhoto();
}

// ---- Input: the data file, the genome-wide scan, one chromosome

void MyWidget::getFilename() {
    restartLog();
    chosenPath =
        QFileDialog::getOpenFileName(this, tr("Welcome to  PELMARK !  Select File"),
                                     startDir.absolutePath(), tr("Image Files (*.txt *.csv)"));
    if (chosenPath.isEmpty()) {
        if (fileList.isEmpty())
            endProcess(QStringLiteral("Input file problem!\n"));
        return;
    }
    startDir = QFileInfo(chosenPath).absoluteDir();
    rememberDataFile();
    if (filename[0] == '\0')
        return;
    listDataFiles();
    click_times = 0;

    Tag.clear();
    for (QVector<int>* list : {&Start_index, &End_index, &Start_value, &End_value, &Color_value})
        list->clear();
    getManhattan0();
    if (Tag.size() == 1) {
        selected_chromosome = 0;
        displayLocal();
        getManhattan();
        getParameters();
        reloadPhoto();
    } else {
        globaldisplay = 1;
        getParameters();
        reloadPhoto0();
    }
}

void MyWidget::rememberDataFile() {
    fileList.clear();
    copyPadded(filename, sizeof filename, chosenPath);
    if (filename[0] != '\0')
        copyPadded(shortname, shortnameBytes, QFileInfo(chosenPath).fileName());
}

void MyWidget::listDataFiles() {
    const QDir folder = QFileInfo(chosenPath).absoluteDir();
    for (const QString& name : folder.entryList({QStringLiteral("*.txt"), QStringLiteral("*.csv")},
                                                QDir::Files, QDir::Name))
        fileList.append(folder.absoluteFilePath(name));
    const QByteArray chosen = textIn(filename);
    const auto found = std::find_if(fileList.cbegin(), fileList.cend(), [&](const QString& path) {
        return path.toLocal8Bit() == chosen;
    });
    if (found != fileList.cend())
        file_index = static_cast<int>(found - fileList.cbegin());
    stepOK = fileList.size() < 2 ? 0 : 1;
}

void MyWidget::getManhattan0() {
    QFile dataFile(dataFileName());
    const WaitCursor waitCursor(dataFile.size());
    AssociationFile file(dataFile);
    if (const std::optional<Fault> fault = file.open())
        endProcess(*fault);
    forgetPoints();
    const GenomeScan scan = valueOrEnd(scanGenome(file));
    Tag = scan.chromosomes.tags;
    Start_index = scan.chromosomes.startIndex;
    End_index = scan.chromosomes.endIndex;
    Start_value = scan.chromosomes.startValue;
    End_value = scan.chromosomes.endValue;
    Color_value = scan.chromosomes.colorValue;
    setShownSet(scan.points);
    setWorkingSet(scan.points);
}

void MyWidget::getManhattan() {
    QFile dataFile(dataFileName());
    const WaitCursor waitCursor(dataFile.size());
    AssociationFile file(dataFile);
    if (const std::optional<Fault> fault = file.open())
        endProcess(*fault);
    forgetPoints();
    if (selected_chromosome < 0 || selected_chromosome >= Tag.size())
        endProcess(Fault::TooFewChromosomePoints);
    const QString label = Tag[selected_chromosome];
    writeLog("selected chromosome by getManhattan ", label, '\n');
    setShownSet(valueOrEnd(loadChromosome(file, label)));
    copyShownToWorkingSet();
}

// ---- Plot: view range and scale, the two plots

void MyWidget::getParameters() {
    setSessionGeometry(plotGeometry(shownSet(), screenRect.size()));
    ++globaltimes;
    if (globaldisplay != 1 || globaltimes != 1 || Pos_list.isEmpty())
        return;
    writeLog("Get GLOBAL\n");
    GLOBAL_minX = minX;
    GLOBAL_maxX = maxX;
    GLOBAL_pixPerX = pixPerX;
    GLOBAL_pixPerY = pixPerY;
}

QPixmap MyWidget::plot(QList<int> positions, QList<double> values, int count) {
    const ChromosomePlot options{highlightRange(rangeStartEdit->text(), rangeEndEdit->text()),
                                 line != 0, stripes != 0};
    return QPixmap::fromImage(
        paintChromosome(sessionGeometry(), firstPoints(positions, values, count), options));
}

QPixmap MyWidget::plot0(QList<int> positions, QList<double> values, int count) {
    const GenomePlot genome{shortText(), Tag, Start_value, Color_value, stripes != 0};
    const QImage image =
        paintGenome(sessionGeometry(), firstPoints(positions, values, count), genome);
    globaldisplay = 1;
    return QPixmap::fromImage(image);
}

// ---- Selection: the box, the chromosome pick, zooming, removing, saving

void MyWidget::mousePressEvent(QMouseEvent* event) {
    boxStart = imageLabel->mapFromParent(event->position().toPoint());
    rubberBand->setGeometry(QRect(boxStart, QSize()));
    rubberBand->show();
}

void MyWidget::mouseMoveEvent(QMouseEvent* event) {
    boxEnd = imageLabel->mapFromParent(event->position().toPoint());
    rubberBand->setGeometry(QRect(boxStart, boxEnd).normalized());
}

// A box without area does nothing and leaves the band as it was drawn last.
void MyWidget::mouseReleaseEvent(QMouseEvent* event) {
    boxEnd = imageLabel->mapFromParent(event->position().toPoint());
    const PixelBox box = PixelBox{boxStart, boxEnd}.within(imageLabel->size());
    boxStart = box.start;
    boxEnd = box.end;
    if (!box.hasArea())
        return;
    if (globaldisplay != 0)
        selectChromosome();
    else
        copyAndPaste();
}

void MyWidget::selectChromosome() {
    if (Start_value.isEmpty()) {
        rubberBand->hide();
        return;
    }
    pixPerX = GLOBAL_pixPerX;
    pixPerY = GLOBAL_pixPerY;
    minX = GLOBAL_minX;
    maxX = GLOBAL_maxX;
    const int point = (boxStart.x() + boxEnd.x()) / 2;
    const int position = sessionGeometry().positionAt(point);
    const int i = chromosomeAt(position, Start_value, End_value).value_or(0);
    selected_chromosome = i;
    writeLog("select chrom ", Tag[i], " ", i, " point ", point, " position ", position, " start ",
             Start_value[i], " end ", End_value[i], " pixPerX ", pixPerX, " minX ", minX, "\n\n");
    getManhattan();
    getParameters();
    reloadPhoto();
    rubberBand->hide();
}

void MyWidget::copyAndPaste() {
    setShownSet(pointsInside(takeShownSet(), dataBox({boxStart, boxEnd}, sessionGeometry())));
    getParameters();
    reloadPhoto();
    rubberBand->hide();
}

// Takes out what lies in the view's range, so also points beside the box that only its margin
// holds. A view that starts below 0 is left alone.
void MyWidget::removeSelection() {
    if (minX < 0)
        return;
    getParameters();
    setWorkingSet(pointsOutside(takeWorkingSet(), {minX, maxX, minY, maxY}));
    copyWorkingToShownSet();
    getParameters();
    reloadPhoto();
}

void MyWidget::showRemaining() {
    copyWorkingToShownSet();
    getParameters();
    reloadPhoto();
}

void MyWidget::Save() {
    if (globaldisplay == 1)
        savePlotImage(genomePixmap, shortText() + QLatin1String(".png"));
    else
        makeFile();
}

void MyWidget::saveAndRemove() {
    if (minX < 0)
        return;
    if (globaldisplay == 1)
        Save();
    else if (makeFile())
        removeSelection();
}

// True when the caller may go on, which it may after an empty name too.
bool MyWidget::makeFile() {
    if (save_counter != 0)
        return true;
    bool ok = false;
    chosenPath = QInputDialog::getText(this, QStringLiteral("Enter new filename"),
                                       QStringLiteral("File name * or *.txt"), QLineEdit::Normal,
                                       QString::fromLocal8Bit(textIn(defaultname)), &ok);
    if (!ok || chosenPath.isEmpty())
        return ok;
    copyPadded(defaultname, defaultnameBytes, chosenPath);
    const QString table = tableName(chosenPath);
    if (!savePointTable(table, shownSet(), Tag[0]))
        endProcess(QStringLiteral("Could not generate outpout file!"));
    savePlotImage(plotPixmap, imageName(table));
    return true;
}
