#!/usr/bin/python3
# Reference values of the pie tests, computed from the rules as stated (numpy only).
import numpy as np

d = np.deg2rad
# Back-to-front keys of four quarter segments starting at 10 degrees, the last one exploded by
# `p` percent: min(sin(start + 0.001 sweep), sin(start + 0.999 sweep)) * (1 + p / 100).
for p in (0, 100):
    starts = np.array([10, 100, 190, 280.0]); sweeps = np.full(4, 90.0)
    pct = np.array([0, 0, 0, p])
    key = np.minimum(np.sin(d(starts + 0.001 * sweeps)), np.sin(d(starts + 0.999 * sweeps))) * (1 + pct / 100)
    print("order", p, list(np.argsort(key, kind="stable")))

# Extents of one shifted segment [100, 170] by 100 %: left and down reach beyond the circle.
a, w, k = 100.0, 70.0, 1.0
m = a + w / 2
sx, sy = k * np.cos(d(m)), k * np.sin(d(m))
left = -sx - (1 - max(-np.cos(d(a)), -np.cos(d(a + w))))
down = sy - (1 - max(np.sin(d(a)), np.sin(d(a + w))))
print("left %.9f down %.9f" % (left * 0.5, down * 0.5))
# The rim point of an ellipse 200 x 100 at the screen angle 30 degrees (a ray from the centre).
t = np.arctan2(np.sin(d(30)) * 200, np.cos(d(30)) * 100)
print("rim30 %.9f %.9f" % (100 + np.cos(t) * 100, 50 + np.sin(t) * 50))
