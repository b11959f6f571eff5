#pragma once
// Fonts of the core, kept by the names the system used ("MS Sans Serif", "Tahoma", ...), as
// installed families that can show Thai. Sizes stay in points.
#include "frame/Types.h"

#include <QFont>
#include <QString>

namespace tq7 {

// The installed family that stands for a font name: the name itself when it is installed and
// writes Thai, otherwise the closest Thai family of its kind (sans, serif, fixed pitch).
QString hostFontFamily(const QString& name);
// The Thai-capable sans family used for the default and for unknown names.
QString defaultThaiFamily();
QFont toQFont(const tq7::Font& font);
// A cell's font: the family of a name, a size in points and the bold switch.
QFont toQFont(const QString& name, double pointSize, bool bold);

}  // namespace tq7
