#!/usr/bin/env python3
"""Derives the constants of the library's own trigonometric functions
(math/portable/): minimax polynomial coefficients by the Remez exchange
algorithm, the bits of 2/pi for the reduction of huge arguments, the split
pieces of pi/2 and the table of tan(i/64).

Needs python3-mpmath. Prints C++ initialisers and, for each polynomial, its
maximum relative error after the coefficients are rounded to double:

    python3 tools/trig_coefficients.py
"""

from mpmath import mp, mpf, matrix, lu_solve, sqrt, sin, cos, tan, atan, asin, pi, floor, ldexp, frexp

mp.dps = 90

# Degrees in z = x^2 of the tail polynomials.
SIN_DEGREE = 6
COS_DEGREE = 5
ATAN_DEGREE = 11
ASIN_DEGREE = 12
# The weights vanish at z = 0, so the fit starts just above it.
LOW = mpf("1e-12")


def to_double(x):
    return float(x)  # round to nearest double


def hexf(x):
    return float(x).hex()


def remez(f, w, a, b, degree, iterations=40):
    """Coefficients c0..c_degree of the polynomial p minimising max |w (p - f)| on [a, b]."""
    n = degree + 2
    xs = [(a + b) / 2 - (b - a) / 2 * cos(pi * i / (n - 1)) for i in range(n)]
    grid = [(a + b) / 2 - (b - a) / 2 * cos(pi * i / 4000) for i in range(4001)]
    fgrid = [(f(x), w(x)) for x in grid]
    coefficients = None
    for _ in range(iterations):
        A = matrix(n, n)
        rhs = matrix(n, 1)
        for i, x in enumerate(xs):
            fx = f(x)
            for j in range(degree + 1):
                A[i, j] = x ** j
            A[i, degree + 1] = -((-1) ** i) / w(x)
            rhs[i] = fx
        solution = lu_solve(A, rhs)
        coefficients = [solution[j] for j in range(degree + 1)]
        level = abs(solution[degree + 1])

        def err(x, fw):
            p = mpf(0)
            for c in reversed(coefficients):
                p = p * x + c
            return (p - fw[0]) * fw[1]

        errors = [err(x, fx) for x, fx in zip(grid, fgrid)]
        # One extremum per run of equal sign.
        runs = []
        start = 0
        for i in range(1, len(grid) + 1):
            if i == len(grid) or (errors[i] > 0) != (errors[start] > 0):
                best = max(range(start, i), key=lambda k: abs(errors[k]))
                runs.append(best)
                start = i
        while len(runs) > n:
            # Drop the smaller end.
            if abs(errors[runs[0]]) < abs(errors[runs[-1]]):
                runs.pop(0)
            else:
                runs.pop()
        if len(runs) < n:
            break
        xs = [grid[k] for k in runs]
        worst = max(abs(e) for e in errors)
        if worst / level - 1 < mpf("1e-8"):
            break
    return coefficients


def rounded_error(f, w, a, b, coefficients):
    cs = [mpf(to_double(c)) for c in coefficients]
    worst = mpf(0)
    for i in range(20001):
        x = a + (b - a) * i / 20000
        p = mpf(0)
        for c in reversed(cs):
            p = p * x + c
        worst = max(worst, abs((p - f(x)) * w(x)))
    return worst


def odd_tail(g, limit):
    """z -> (g(sqrt z) - sqrt z) / z^1.5, with its limit at 0."""
    def f(z):
        if z < mpf("1e-30"):
            return limit
        s = sqrt(z)
        return (g(s) - s) / (z * s)
    return f


def cos_tail(z):
    if z < mpf("1e-30"):
        return mpf(1) / 24
    return (cos(sqrt(z)) - 1 + z / 2) / (z * z)


def fitted(f, w, a, b, degree, fixed=2):
    """The minimax coefficients, the first `fixed` of them rounded to double
    one at a time and the rest fitted again around the rounded ones."""
    if fixed == 0 or degree == 0:
        return remez(f, w, a, b, degree)
    c0 = mpf(to_double(remez(f, w, a, b, degree)[0]))
    rest = fitted(lambda z: (f(z) - c0) / z, lambda z: w(z) * z, a, b, degree - 1, fixed - 1)
    return [c0] + rest


def emit_poly(name, f, w, a, b, degree):
    cs = fitted(f, w, a, b, degree)
    e = rounded_error(f, w, a, b, cs)
    print("// %s: degree %d in z on [%s, %s], max error relative to the result 2^%.1f" %
          (name, degree, mp.nstr(a, 6), mp.nstr(b, 6), float(mp.log(e, 2))))
    for c in cs:
        print("    %s,  // %s" % (hexf(c), mp.nstr(c, 17)))


def split_pi_over_2(bits):
    parts = []
    rest = pi / 2
    for _ in range(3):
        m, e = frexp(rest)
        piece = ldexp(floor(ldexp(m, bits)), e - bits)
        parts.append(piece)
        rest -= piece
    parts.append(mpf(to_double(rest)))
    return parts


def main():
    r = mpf("0.7854")  # a little above pi/4: the reduced argument's bound
    # Each tail polynomial is weighed by its share of the final result:
    # sin r = r (1 + z S(z)), cos r = 1 - z/2 + z^2 C(z), and likewise.
    def share(g):
        def w(z):
            if z < mpf("1e-30"):
                return z
            s = sqrt(z)
            return z * s / g(s)
        return w
    emit_poly("sin", odd_tail(sin, mpf(-1) / 6), share(sin), LOW, r * r, SIN_DEGREE)
    emit_poly("cos", cos_tail, lambda z: z * z / cos(sqrt(z)), LOW, r * r, COS_DEGREE)
    emit_poly("atan", odd_tail(atan, mpf(-1) / 3), share(atan), LOW, mpf(7) / 16 * mpf(7) / 16, ATAN_DEGREE)
    emit_poly("asin", odd_tail(asin, mpf(1) / 6), share(asin), LOW, mpf("0.25"), ASIN_DEGREE)

    print("// pi/2 in pieces of 33 bits (the last a full double)")
    for p in split_pi_over_2(33):
        print("    %s,  // %s" % (hexf(p), mp.nstr(p, 20)))
    for name, value in (("pi/2", pi / 2), ("pi", pi), ("pi/4", pi / 4), ("3pi/4", 3 * pi / 4),
                        ("atan(1/2)", atan(mpf(1) / 2)), ("atan(3/2)", atan(mpf(3) / 2))):
        hi = to_double(value)
        lo = to_double(value - mpf(hi))
        print("// %s: {%s, %s}" % (name, hexf(hi), hexf(lo)))

    print("// tan(i/64), i = 0..50, as {hi, lo}")
    for i in range(51):
        value = tan(mpf(i) / 64)
        hi = to_double(value)
        lo = to_double(value - mpf(hi))
        print("    {%s, %s}," % (hexf(hi), hexf(lo)))

    print("// 2/pi: 20 words of 64 bits after the binary point")
    x = 2 / pi
    words = []
    mp.dps = 500
    x = 2 / pi
    for _ in range(20):
        x *= 2 ** 64
        w = int(floor(x))
        words.append(w)
        x -= w
    for i in range(0, 20, 2):
        print("    " + ", ".join("0x%016xULL" % w for w in words[i:i + 2]) + ",")


if __name__ == "__main__":
    main()
