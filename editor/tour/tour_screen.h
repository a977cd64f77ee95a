#pragma once

namespace editor {

/// Gives a program without a screen one that is large enough for every dialog, so that pictures
/// show them whole. To be called before the application object is made; changes nothing where
/// there is a screen or its size was chosen.
void provideTourScreen();

}  // namespace editor
