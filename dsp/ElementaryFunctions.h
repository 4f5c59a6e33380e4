// The elementary functions of the filter designs, control laws and band models. They are compiled
// into the product from one source, so that every system computes the same bits, and lie within 2
// units in the last place of the exact value in the ranges below.
#pragma once

namespace elementary {

double sine(double x);                    // radians, 0 .. pi
double cosine(double x);                  // radians, 0 .. 2 pi
double logarithm(double x);               // natural; a positive normal number
double decimalLogarithm(double x);        // a positive normal number
double powerOfTen(double exponent);       // -280 .. 280
double power(double x, double exponent);  // 1e-9 .. 1000 to the power of 0.5 .. 8

}  // namespace elementary
