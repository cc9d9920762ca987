#include "streams.h"

void complain(Streams& streams, const QString& message) {
    streams.error.write("pelmark-tools: " + message.toUtf8() + '\n');
}
