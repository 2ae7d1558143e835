#pragma once

/// Lets the windows grow with the scale that the system has set for its screens. To be called
/// before there is an application.
void prepareScaling();

/// Gives the application the font that the windows' fixed sizes are drawn for, and its icon.
void prepareAppearance();
