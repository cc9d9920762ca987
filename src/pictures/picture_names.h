#pragma once

#include "command.h"
#include "failure.h"
#include "plot_request.h"

#include <QByteArrayList>
#include <variant>

// Where the pictures of the files on a command line go, index-aligned with the files.
struct PictureNames {
    QByteArrayList paths;
    PictureFormat format = PictureFormat::Png;
};

// In a folder, each picture has its file's name and the format's ending.
std::variant<PictureNames, Failure> pictureNames(const Arguments& arguments);
