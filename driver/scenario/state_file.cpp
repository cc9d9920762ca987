#include "scenario/state_file.h"

#include "dialogs.h"
#include "give_up.h"
#include "scenario/session_state.h"
#include "scenario/window_state.h"
#include "window_parts.h"

#include <QFile>
#include <QJsonDocument>

namespace {

QString stateFileName;

} // namespace

void setStateFile(const QString& fileName) {
    stateFileName = fileName;
}

void writeState(const QString& label) {
    QJsonObject state = sessionState();
    state["label"] = label;
    state["window"] = windowState();
    state["dialog"] = dialogs::state();
    if (label == u"structure") {
        state["layout"] = layoutText();
        state["layoutExceptions"] = layoutExceptions();
        state["methods"] = metaMethods();
    }
    QFile file(stateFileName);
    const QByteArray text = QJsonDocument(state).toJson(QJsonDocument::Compact) + '\n';
    if (!file.open(QIODevice::Append) || file.write(text) != text.size() || !file.flush())
        giveUp(QStringLiteral("cannot write the state to \"%1\"").arg(stateFileName));
}
