#include "inside.h"

#include "window_parts.h"

#include <QAccessible>
#include <QApplication>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QTest>

// Help for users with a screen reader, with only a keyboard, or with a question.
class HelpTest : public QObject {
    Q_OBJECT

private slots:
    void everyControlExplainsItself_data();
    void everyControlExplainsItself();
    void everyCommandHasItsKey_data();
    void everyCommandHasItsKey();
    void everyCommandActsThroughTheInterface();
    void keysAreDistinct();
    void tabGoesFromLeftToRight();
    void nothingIsLeftOut();
    void windowsHaveTheIcon();
};

const char* const fileName = PELMARK_EXAMPLES "/chromosome1.txt";

void beforeTheWindow() {}

QObject* newTest() {
    return new HelpTest;
}

static const QStringList buttons{"newFileButton", "globalButton", "unzoomButton",
                                 "removeButton",  "saveButton",   "saveRemoveButton",
                                 "exitButton"};

static QAccessibleInterface* interfaceOf(const QString& name) {
    return QAccessible::queryAccessibleInterface(parts::widget(name));
}

void HelpTest::everyControlExplainsItself_data() {
    QTest::addColumn<QString>("accessibleName");
    QTest::addColumn<int>("role");
    QTest::newRow("imageLabel") << "Plot" << static_cast<int>(QAccessible::Graphic);
    QTest::newRow("nameLabel") << "chromosome1.txt" << static_cast<int>(QAccessible::StaticText);
    QTest::newRow("hintLabel") << "" << static_cast<int>(QAccessible::StaticText);
    QTest::newRow("checkBox1") << "Join the points with lines"
                               << static_cast<int>(QAccessible::CheckBox);
    QTest::newRow("checkBox2") << "Reference lines" << static_cast<int>(QAccessible::CheckBox);
    QTest::newRow("rangeStartEdit")
        << "First position to mark" << static_cast<int>(QAccessible::EditableText);
    QTest::newRow("rangeEndEdit") << "Last position to mark"
                                  << static_cast<int>(QAccessible::EditableText);
    const char* const texts[] = {"New File", "Global",          "Unzoom", "Remove Selection",
                                 "Save",     "Save and Remove", "Exit"};
    for (qsizetype i = 0; i < buttons.size(); ++i)
        QTest::newRow(qPrintable(buttons[i])) << texts[i] << static_cast<int>(QAccessible::Button);
}

void HelpTest::everyControlExplainsItself() {
    QFETCH(QString, accessibleName);
    QFETCH(int, role);
    const QString name = QTest::currentDataTag();
    const QWidget* widget = parts::widget(name);
    QAccessibleInterface* interface = interfaceOf(name);
    QVERIFY(interface);
    QCOMPARE(interface->text(QAccessible::Name), accessibleName);
    QCOMPARE(static_cast<int>(interface->role()), role);
    QVERIFY(widget->toolTip().size() > 10);
    QVERIFY(widget->whatsThis().size() >= widget->toolTip().size());
    QCOMPARE(interface->text(QAccessible::Description), widget->toolTip());
    QCOMPARE(interface->text(QAccessible::Help), widget->whatsThis());
}

void HelpTest::everyCommandHasItsKey_data() {
    QTest::addColumn<QString>("key");
    const char* const keys[] = {"Alt+N", "Alt+G", "Alt+U", "Alt+R", "Alt+S", "Alt+A", "Alt+E"};
    for (qsizetype i = 0; i < buttons.size(); ++i)
        QTest::newRow(qPrintable(buttons[i])) << keys[i];
}

void HelpTest::everyCommandHasItsKey() {
    QFETCH(QString, key);
    QAccessibleInterface* interface = interfaceOf(QTest::currentDataTag());
    QCOMPARE(interface->text(QAccessible::Accelerator).compare(key, Qt::CaseInsensitive), 0);
    QVERIFY(interface->actionInterface()
                ->keyBindingsForAction(QAccessibleActionInterface::pressAction())
                .contains(key));
}

// Works the controls as an assistive program does; of the buttons, one whose effect can be checked.
void HelpTest::everyCommandActsThroughTheInterface() {
    for (const QString& name : buttons)
        QVERIFY(interfaceOf(name)->actionInterface()->actionNames().contains(
            QAccessibleActionInterface::pressAction()));
    for (const int wanted : {1, 0}) {
        interfaceOf("checkBox1")
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(line, wanted);
    }
    const QList<int> all = Pos_list2;
    Pos_list = all.first(10);
    Value_list = Value_list2.first(10);
    interfaceOf("unzoomButton")
        ->actionInterface()
        ->doAction(QAccessibleActionInterface::pressAction());
    QTRY_COMPARE(Pos_list, all);
}

void HelpTest::keysAreDistinct() {
    QStringList keys;
    for (const QString& name : buttons)
        keys.append(interfaceOf(name)->text(QAccessible::Accelerator));
    QCOMPARE(keys.removeDuplicates(), 0);
}

void HelpTest::tabGoesFromLeftToRight() {
    const QStringList order =
        QStringList{"checkBox1", "checkBox2", "rangeStartEdit", "rangeEndEdit"} + buttons;
    parts::widget(order.first())->setFocus();
    QStringList visited;
    for (qsizetype i = 0; i < order.size(); ++i) {
        visited.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    QCOMPARE(visited, order);
    QCOMPARE(QApplication::focusWidget()->objectName(), order.first());
}

// Every widget has help except the two separators.
void HelpTest::nothingIsLeftOut() {
    int separators = 0;
    for (const QWidget* child :
         parts::window()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const auto* label = qobject_cast<const QLabel*>(child);
        if (label && label->frameShape() == QFrame::HLine)
            ++separators;
        else
            QVERIFY2(!child->toolTip().isEmpty(), child->metaObject()->className());
    }
    QCOMPARE(separators, 2);
}

void HelpTest::windowsHaveTheIcon() {
    const QIcon icon = parts::window()->windowIcon();
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        QVERIFY(icon.availableSizes().contains(QSize(size, size)));
        QCOMPARE(icon.pixmap(size, size).size(), QSize(size, size));
    }
    QVERIFY(QFile::exists(
        QStringLiteral(PELMARK_SHARE "/%1.desktop").arg(QGuiApplication::desktopFileName())));
}

#include "tst_help.moc"
