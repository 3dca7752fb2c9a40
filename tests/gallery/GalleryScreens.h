#pragma once

struct Environment;

/// Registers the gallery's screen and fills the storyboard of `environment`, from which the gallery
/// takes its sheet.
void prepareGallery(Environment &environment);
