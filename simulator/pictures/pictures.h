#pragma once

#include <QByteArray>

#include <memory>

namespace sim {

/// What the two cameras look at: 8-bit grey, PictureWidth x PictureHeight, rows without padding.
struct Pictures
{
    QByteArray palmprint;
    QByteArray vein;
};

/// The pictures of a seed. Drawing takes some tens of milliseconds; the last pair drawn is kept,
/// so that a second terminal in the same process gets it at once.
std::shared_ptr<const Pictures> picturesFor(quint32 seed);

} // namespace sim
