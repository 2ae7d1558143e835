#pragma once

/// Makes the windows follow the scale that the system has set for its screens. Must be called
/// before the application object is created.
void prepareScaling();

/// Sets the application's icon, and the font for which the fixed sizes of the windows were chosen.
void prepareAppearance();
