#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""make_touchstone.py FOLDER: two.s2p (200,000 points, MA), sixteen.s16p (2,000), large.s64p (1,000; RI)."""
import random
import sys

folder = sys.argv[1]
random.seed(1)
with open(folder + "/two.s2p", "w") as out:
    out.write("# Hz S MA R 50\n")
    for i in range(200000):
        pairs = (f"{random.uniform(0, 1):.8f} {random.uniform(-180, 180):.6f}" for _ in range(4))
        out.write(f"{1000000 + i * 50000} " + " ".join(pairs) + "\n")
for name, ports, points in (("sixteen.s16p", 16, 2000), ("large.s64p", 64, 1000)):
    pool = [f"{random.uniform(-1, 1):.16f}" for _ in range(20000)]
    with open(folder + "/" + name, "w") as out:
        out.write("# Hz S RI R 50\n")
        for i in range(points):
            out.write(f"{1000000 + i * 5000000}")
            for _ in range(ports * ports // 4):
                out.write(" " + " ".join(random.choices(pool, k=8)) + "\n")
