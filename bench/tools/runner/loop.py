s = 0
for i in range(1, 10000001):
    s = s + i * 3 % 7
print(s)
