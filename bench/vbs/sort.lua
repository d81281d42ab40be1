-- Quicksort of pseudo-random numbers.
local rounds = tonumber(arg[1] or 6)

local function numbers(n)
  local a = {}
  local x = 12345
  for i = 0, n - 1 do
    x = (x * 171 + 11213) % 530963
    a[i] = x
  end
  return a, n - 1
end

local function quick_sort(a, low, high)
  local i, j = low, high
  local pivot = a[(low + high) // 2]
  while i <= j do
    while a[i] < pivot do i = i + 1 end
    while pivot < a[j] do j = j - 1 end
    if i <= j then
      a[i], a[j] = a[j], a[i]
      i = i + 1
      j = j - 1
    end
  end
  if low < j then quick_sort(a, low, j) end
  if i < high then quick_sort(a, i, high) end
end

local sum = 0
for _ = 1, rounds do
  local a, last = numbers(200000)
  quick_sort(a, 0, last)
  for i = 0, last, 1000 do
    sum = (sum * 3 + a[i]) % 1000003
  end
end
print(sum)
