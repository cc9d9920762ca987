#include "table_head.h"

#include "text_blocks.h"

#include <QIODevice>
#include <algorithm>

TableHead readTableHead(QIODevice& device) {
    constexpr qsizetype linesWanted = 12'000;
    constexpr qsizetype bytesWanted = 16 * 1024 * 1024;
    TableHead head;
    TextBlocks blocks(device, TextBlocks::defaultBlockSize, TextBlocks::Unmarked::AsTheyAre);
    qsizetype lines = 0;
    while (lines < linesWanted && head.text.size() < bytesWanted) {
        if (!blocks.next()) {
            head.isFailed = blocks.failed();
            head.isWhole = !head.isFailed;
            break;
        }
        const std::string_view piece = blocks.piece();
        lines += std::count(piece.begin(), piece.end(), '\n');
        head.text.append(piece.data(), static_cast<qsizetype>(piece.size()));
    }
    return head;
}
