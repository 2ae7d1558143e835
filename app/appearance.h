#pragma once

/// Gives the application the font that the windows' fixed sizes are drawn for, and its icon.
void prepareAppearance();
