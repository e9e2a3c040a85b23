// The characters that standard output can show.
#pragma once

namespace zorl2_inspect {

// Whether the locale of the environment has UTF-8 and the terminal is not a dumb one.
bool CanShowUtf8();

}  // namespace zorl2_inspect
