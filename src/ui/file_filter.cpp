#include "ui/file_filter.h"

namespace quillet::ui {

QStringList NameFilters(const std::string& filter) {
    const QStringList parts = QString::fromStdString(filter).split('|');
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(';', Qt::SkipEmptyParts);
        for (QString& p : patterns) {
            p = p.trimmed();
            if (p == "*.*") p = "*";
        }
        out << parts[i] + " (" + patterns.join(' ') + ")";
    }
    return out;
}

}  // namespace quillet::ui
