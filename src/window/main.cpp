#include "hfile.h"

#include "box.h"
#include "chromosome_load.h"
#include "desktop_identity.h"
#include "genome_scan.h"
#include "help_texts.h"
#include "log.h"
#include "plot_image.h"
#include "plot_painter.h"
#include "point_table.h"
#include "readable_text.h"
#include "session.h"
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

PlotPoints firstPoints(const QList<int>& positions, const QList<double>& values, int count) {
    const auto size = static_cast<std::size_t>(count);
    return {std::span(positions).first(size), std::span(values).first(size)};
}

void setBackground(QLabel* label, const QColor& color) {
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
    createLayouts();
    createLabels();
    createOptions();
    createButtons();
    rubberBand = new QRubberBand(QRubberBand::Rectangle, imageLabel);
    QFrame* const firstSeparator = createSeparator();
    QFrame* const secondSeparator = createSeparator();
    connectCommands();
    nestLayouts();
    addWidgets(firstSeparator, secondSeparator);
    describeWidgets();
    screenRect = QGuiApplication::primaryScreen()->geometry();
    startDir = QDir::current();
    checkBox2Action();
    getFilename();
}

MyWidget::~MyWidget() = default;

void MyWidget::createLayouts() {
    mainLayout = new QVBoxLayout;
    topLayout = new QHBoxLayout;
    topSpareLayout = new QHBoxLayout;
    imageLayout = new QVBoxLayout;
    middleLayout = new QVBoxLayout;
    middleSpareLayout = new QHBoxLayout;
    infoLayout = new QHBoxLayout;
    bottomLayout = new QHBoxLayout;
    buttonLayout = new QHBoxLayout;
}

void MyWidget::createLabels() {
    imageLabel = new QLabel;
    setBackground(imageLabel, QColor(150, 150, 150));
    nameLabel = new QLabel;
    nameLabel->setTextFormat(Qt::PlainText); // a file's name is not markup
    setBackground(nameLabel, Qt::gray);
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
    // There is no such slot. Qt warns of that at every start, which is known and kept.
    connect(this, SIGNAL(getSize()), this, SLOT(reSize()));
}

void MyWidget::nestLayouts() {
    mainLayout->addLayout(topLayout);
    topLayout->addLayout(topSpareLayout);
    topLayout->addLayout(imageLayout);
    mainLayout->addLayout(middleLayout);
    middleLayout->addLayout(middleSpareLayout);
    middleLayout->addLayout(infoLayout);
    mainLayout->addLayout(bottomLayout);
    bottomLayout->addLayout(buttonLayout);
}

void MyWidget::addWidgets(QFrame* firstSeparator, QFrame* secondSeparator) {
    imageLayout->addWidget(imageLabel);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{nameLabel, firstSeparator, checkBox1, hintLabel, checkBox2,
                                         secondSeparator, rangeStartEdit, rangeEndEdit})
        infoLayout->addWidget(widget);
    for (QPushButton* button : {newFileButton, globalButton, unzoomButton, removeButton, saveButton,
                                saveRemoveButton, exitButton})
        buttonLayout->addWidget(button);
    setLayout(mainLayout);
}

void MyWidget::describeWidgets() {
    describe({{imageLabel, helpTexts::imageLabel},
              {nameLabel, helpTexts::nameLabel},
              {hintLabel, helpTexts::hintLabel},
              {checkBox1, helpTexts::checkBox1},
              {checkBox2, helpTexts::checkBox2},
              {rangeStartEdit, helpTexts::rangeStartEdit},
              {rangeEndEdit, helpTexts::rangeEndEdit},
              {newFileButton, helpTexts::newFileButton},
              {globalButton, helpTexts::globalButton},
              {unzoomButton, helpTexts::unzoomButton},
              {removeButton, helpTexts::removeButton},
              {saveButton, helpTexts::saveButton},
              {saveRemoveButton, helpTexts::saveRemoveButton},
              {exitButton, helpTexts::exitButton}});
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

// The scaled copy is dropped: a step with no effect, kept as it stands. Qt warns of a null pixmap.
void MyWidget::scaleLastPlot() const {
    if (!plotPixmap.isNull())
        static_cast<void>(plotPixmap.scaled(fwidth, fheight));
}

void MyWidget::reloadPhoto() {
    displayLocal();
    scaleLastPlot();
    plotPixmap = plot(Pos_list, Value_list, static_cast<int>(Pos_list.size()));
    plotImage = plotPixmap.toImage();
    imageLabel->setPixmap(plotPixmap);
    nameLabel->setText(dataFileShortName());
}

void MyWidget::reloadPhoto0() {
    scaleLastPlot();
    genomePixmap = plot0(Pos_list, Value_list, static_cast<int>(Pos_list.size()));
    nameLabel->setText(dataFileShortName());
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
    fileList.clear();
    setDataFile(chosenPath);
    if (filename[0] == '\0')
        return;
    listDataFiles();
    click_times = 0;

    setSessionChromosomes({});
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

void MyWidget::listDataFiles() {
    const QDir folder = QFileInfo(chosenPath).absoluteDir();
    for (const QString& name : folder.entryList({QStringLiteral("*.txt"), QStringLiteral("*.csv")},
                                                QDir::Files, QDir::Name))
        fileList.append(folder.absoluteFilePath(name));
    const QByteArray chosen(filename, static_cast<qsizetype>(qstrnlen(filename, sizeof filename)));
    const auto found = std::find_if(fileList.cbegin(), fileList.cend(), [&](const QString& path) {
        return path.toLocal8Bit() == chosen;
    });
    if (found != fileList.cend())
        file_index = static_cast<int>(found - fileList.cbegin());
    stepOK = fileList.size() < 2 ? 0 : 1;
}

void MyWidget::getManhattan0() {
    QFile dataFile(dataFilePath());
    const WaitCursor waitCursor(dataFile.size());
    forgetPoints();
    const GenomeScan scan = valueOrEnd(scanGenome(dataFile));
    setSessionChromosomes(scan.chromosomes);
    setShownSet(scan.points);
    setWorkingSet(scan.points);
}

void MyWidget::getManhattan() {
    QFile dataFile(dataFilePath());
    const WaitCursor waitCursor(dataFile.size());
    forgetPoints();
    const QString label = Tag.value(selected_chromosome);
    ReadOptions options;
    options.atData = [&] {
        if (selected_chromosome < 0 || selected_chromosome >= Tag.size())
            endProcess(Fault{FaultCode::TooFewChromosomePoints});
        writeLog("selected chromosome by getManhattan ", label, '\n');
    };
    setShownSet(valueOrEnd(loadChromosome(dataFile, label, options)));
    copyShownToWorkingSet();
}

// ---- Plot: view range and scale, the two plots

void MyWidget::getParameters() {
    setSessionGeometry(plotGeometry(shownSet(), screenRect.size()));
    ++globaltimes;
    if (globaldisplay != 1 || globaltimes != 1 || Pos_list.isEmpty())
        return;
    writeLog("Get GLOBAL\n");
    keepGenomeScale();
}

QPixmap MyWidget::plot(QList<int> positions, QList<double> values, int count) {
    const ChromosomePlot options{highlightRange(rangeStartEdit->text(), rangeEndEdit->text()),
                                 line != 0, stripes != 0};
    return QPixmap::fromImage(
        paintChromosome(sessionGeometry(), firstPoints(positions, values, count), options));
}

QPixmap MyWidget::plot0(QList<int> positions, QList<double> values, int count) {
    const GenomePlot genome{dataFileShortName(), sessionChromosomes(), stripes != 0};
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
    restoreGenomeScale();
    const int point = (boxStart.x() + boxEnd.x()) / 2;
    const int position = sessionGeometry().positionAt(point);
    const int i = chromosomeAt(position, sessionChromosomes()).value_or(0);
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

// Removes what lies in the view's range, and so also points outside the box that only its margin
// holds. Does nothing to a view that starts below 0.
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
        savePlotImage(genomePixmap, dataFileShortName() + QLatin1String(".png"));
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
                                       proposedName(), &ok);
    if (!ok || chosenPath.isEmpty())
        return ok;
    setProposedName(chosenPath);
    const QString table = tableName(chosenPath);
    if (!savePointTable(table, shownSet(), Tag[0]))
        endProcess(QStringLiteral("Could not generate outpout file!"));
    savePlotImage(plotPixmap, imageName(table));
    return true;
}
