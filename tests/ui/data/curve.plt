# Quillet plot
# title: ExDemo
# model: Lorentzian, 1 terms
# engine: a header nobody knows
# x: Time (s)   y: Volts
# rss: 0.0125   stddev: 0.0645497
# columns: x	y	fit	residual
-2	0.25	0.2	0.05
-1	0.45	0.5	-0.05
0	1.1	1	0.1
1	0.5	0.5	0
2	0.15	0.2	-0.05
