#include "plot_words.h"

QJsonObject jsonOf(const DrawnPicture& picture) {
    QJsonObject json{{"input", picture.input},
                     {"output", picture.output},
                     {"what", picture.what},
                     {"markers_drawn", picture.markers},
                     {"labels", QJsonArray::fromStringList(picture.labels)}};
    if (picture.lambda)
        json["lambda"] = *picture.lambda;
    if (picture.reading) {
        QJsonObject reading = jsonOf(*picture.reading);
        for (const char* ofTheDocument : {"version", "command", "inputs", "output"})
            reading.remove(QLatin1String(ofTheDocument));
        reading["markers"] = reading.take("written");
        json["reading"] = reading;
    }
    return json;
}

QJsonObject plotJson(const QJsonArray& pictures, const QStringList& failed) {
    return {{"version", 1},
            {"command", "plot"},
            {"pictures", pictures},
            {"failed", QJsonArray::fromStringList(failed)}};
}
