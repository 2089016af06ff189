class Counter:
    def __init__(self):
        self.total = 0
    def add(self, n):
        self.total = self.total + n
    def get_total(self):
        return self.total
c = Counter()
for i in range(1, 100001):
    c.add(i)
print(c.get_total())
