x = (a.b(1, , 2) + [c d]) ^ -&O17 & 1.5e-3 Is Not y
