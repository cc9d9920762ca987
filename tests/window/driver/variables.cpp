#include "driver/variables.h"

#include "hfile.h"

#include <QMap>

namespace variables {

bool set(const QString& name, int value) {
    static const QMap<QString, int*> table{
        {"save_counter", &save_counter},   {"minX", &minX},
        {"globaldisplay", &globaldisplay}, {"selected_chromosome", &selected_chromosome},
        {"file_index", &file_index},       {"click_times", &click_times}};
    int* const variable = table.value(name);
    if (variable != nullptr)
        *variable = value;
    return variable != nullptr;
}

} // namespace variables
