a = []
for i in range(0, 1000000):
    a.append(i)
s = 0
for i in range(0, len(a)):
    s = s + a[i]
print(s)
