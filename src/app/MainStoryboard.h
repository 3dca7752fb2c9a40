#pragma once

class Storyboard;

/// Fills `storyboard` with the program's screens and the transitions between them.
void fillMainStoryboard(Storyboard &storyboard);
