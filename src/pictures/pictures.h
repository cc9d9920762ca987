#pragma once

#include "picture_file.h"
#include "plot_data.h"

#include <QString>
#include <variant>

// The picture of a scan; `name` is its file's. The data are shared with the picture. Fails where
// there are too few values for a quantile-quantile plot.
std::variant<Picture, Failure> pictureOf(PlotData data, const QString& name,
                                         const PlotRequest& request, PictureFormat format);
