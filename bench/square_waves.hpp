// Square waves against the plain loops: their sums cancel, and their roundings all go one way.
#pragma once

namespace torve {

/// Compares the spectra and filters of the waves of these half periods, and tells on standard
/// output how many values there were and each that differs. How many differ.
[[nodiscard]] long check_square_waves(int first, int last);

}  // namespace torve
