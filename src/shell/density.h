#pragma once

// How small the pixels of the screen are. Sizes in the source are those of a screen of 96 dots per inch.
namespace shell {

constexpr int kPlainDensity = 96;

// Dots per inch of the screen of this session.
int ScreenDensity();

// The pixels that a length of `length` pixels at the plain density takes on this screen.
int ScaledToScreen(int length);

}  // namespace shell
