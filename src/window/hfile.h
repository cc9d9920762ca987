#pragma once

#include <QDir>
#include <QFile>
#include <QImage>
#include <QList>
#include <QPixmap>
#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <QVector>
#include <QWidget>

class QCheckBox;
class QFrame;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QRubberBand;
class QVBoxLayout;

// The program's one window. Its slots are the commands. They share data through the session
// variables below, and each runs to its end before the next event is handled.
//
// The genome view shows all chromosomes, and a box picks one. The chromosome view shows one
// chromosome, zooms to a box and removes points. The constructor asks for the first file, so that
// the window first appears with a plot. A cancel there, and every fault of a file, ends the process
// with status 1 and a line in the log.
class MyWidget : public QWidget {
    Q_OBJECT

public:
    explicit MyWidget(QWidget* parent = nullptr);
    ~MyWidget() override;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

    Q_SIGNAL void getSize();

public slots:
    void checkBox1Action();
    void checkBox2Action();
    void saveAndRemove();
    void Save();
    bool makeFile();
    void getFilename();
    void displayGlobal();
    void displayLocal();
    void reloadPhoto();
    void reloadPhoto0();
    void showRemaining();
    void removeSelection();

public:
    void getManhattan0();
    void getManhattan();
    void getParameters();
    QPixmap plot(QList<int> positions, QList<double> values, int count);
    QPixmap plot0(QList<int> positions, QList<double> values, int count);
    void selectChromosome();
    void copyAndPaste();

private:
    void createLayouts();
    void createLabels();
    void createOptions();
    void createButtons();
    void connectCommands();
    void nestLayouts();
    void addWidgets(QFrame* firstSeparator, QFrame* secondSeparator);
    void describeWidgets();
    QList<QWidget*> chromosomeViewWidgets() const;
    void scaleLastPlot() const;
    void listDataFiles();

    QVBoxLayout* mainLayout;
    QHBoxLayout* topLayout;
    QVBoxLayout* imageLayout;
    QHBoxLayout* topSpareLayout;
    QVBoxLayout* middleLayout;
    QHBoxLayout* middleSpareLayout;
    QHBoxLayout* infoLayout;
    QHBoxLayout* bottomLayout;
    QHBoxLayout* buttonLayout;
    QLineEdit* rangeStartEdit;
    QLineEdit* rangeEndEdit;
    QLabel* imageLabel;
    QLabel* hintLabel;
    QLabel* nameLabel;
    QPushButton* unzoomButton;
    QPushButton* newFileButton;
    QPushButton* globalButton;
    QPushButton* saveButton;
    QPushButton* exitButton;
    QPushButton* removeButton;
    QPushButton* saveRemoveButton;
    QCheckBox* checkBox1;
    QCheckBox* checkBox2;
    QRubberBand* rubberBand;
    QPoint boxStart; // pixels of imageLabel; after a release the box's top left corner
    QPoint boxEnd;
    QStringList fileList; // the data files beside the chosen one; empty until one was opened
    QString chosenPath;
    QPixmap plotPixmap; // the last chromosome plot
    QImage plotImage;
    QRect screenRect;
    QDir startDir;
    QPixmap genomePixmap; // the last genome plot, kept to be shown again as it was
};

// The session: what the commands share. It lives as long as the process, and nothing is reset
// between files unless a command does so.

extern double realMaxY;
extern int minX; // -1 until a view was computed, and while there are no points to show
extern int realMinX;
extern int realMaxX;
extern int line;                // option: join the chromosome plot's points
extern int stripes;             // option: reference lines
extern int globaldisplay;       // 1 in the genome view, 0 in the chromosome view
extern int globaltimes;         // view computations since the process started
extern int selected_chromosome; // index into Tag
extern int save_counter;
// The proposed name for a table, in the local 8-bit encoding; at most 50 bytes are used.
extern char defaultname[100];

extern char filename[200]; // path of the data file; may fill its 200 bytes without a final zero
extern char shortname[50]; // its name without directory, at most 30 bytes
extern int file_index;
extern int click_times;
extern int stepOK;
extern int fwidth; // the plot image, in pixels
extern int fheight;
extern int xmargin;
extern int xmargin2;
extern int ymargin;
extern double pixPerX;
extern double pixPerY;
// The scale of the first genome view of the process, which every chromosome pick uses.
extern double GLOBAL_pixPerX;
extern double GLOBAL_pixPerY;
extern int GLOBAL_minX;
extern int GLOBAL_maxX;
extern double minY; // -log10 p
extern double maxY;
extern int maxX;

// The shown set is drawn, zoomed and saved. The working set is the loaded data less what was
// removed. Positions are genome coordinates after a scan, base pairs after a load.
extern QList<double> Value_list;
extern QList<int> Pos_list;
extern QList<double> Value_list2;
extern QList<int> Pos_list2;
// The log. The stream is defined after its file, so it is flushed and destroyed before it.
extern QFile errorfile;
extern QTextStream error_stream;
// The chromosome index, index-aligned.
extern QVector<int> Start_index;
extern QVector<int> End_index;
extern QVector<int> Start_value;
extern QVector<int> End_value;
extern QVector<int> Color_value;
extern QStringList Tag;
