#ifndef zvNumbers_h
#define zvNumbers_h

/// Conversions of numbers that are defined for every value.
namespace zvNumbers
{
/// Truncated toward zero; at the ends of int beyond them, 0 for a value that is not a number.
int Truncate(double value);

/// Rounded, halves away from zero, with the same limits.
int Round(double value);

/// Rounded to single precision, and back to a double for what is computed next. For a value that
/// counts in the very last digit: compilers have been seen to drop a pair of casts.
double ToSinglePrecision(double value);

/// Whether all three values are finite.
bool AreFinite(const double xyz[3]);
}

#endif
