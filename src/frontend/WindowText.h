#pragma once

#include <QColor>
#include <QLabel>
#include <QPalette>
#include <QString>
#include <string>

#include "frontend/WindowState.h"

// How the window shows the run's texts and colours its labels.
namespace skl::frontend {

// A message or caption of the run as the window shows it.
inline QString Shown(const std::string& text) {
    return QString::fromStdString(DisplayText(text));
}

// A native path (UTF-8) as Qt keeps it.
inline QString Native(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

inline void SetColour(QLabel* label, Colour colour) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, QColor::fromRgb(static_cast<QRgb>(colour)));
    label->setPalette(palette);
}

}  // namespace skl::frontend
