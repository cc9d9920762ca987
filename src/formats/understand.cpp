#include "head_table.h"
#include "header_search.h"
#include "table_format.h"

std::variant<Understanding, Refusal> understand(std::string_view head, bool isWhole,
                                                const PrepareOptions& options) {
    const QList<HeadLine> lines = linesOf(head);
    return options.noHeader ? readWithoutHeader(lines, isWhole, options)
                            : findHeader(lines, isWhole, options);
}
