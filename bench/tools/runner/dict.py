d = {}
for i in range(0, 200000):
    d["k" + str(i)] = i
s = 0
for i in range(0, 200000):
    s = s + d["k" + str(i)]
print(s)
