-- Multiplies matrices: tables of rows.
local rounds = tonumber(arg[1] or 12)

local function rows(n, factor)
  local all = {}
  for i = 0, n - 1 do
    local row = {}
    for j = 0, n - 1 do
      row[j] = (i * factor + j) % 10
    end
    all[i] = row
  end
  return all
end

local function product(a, b, n)
  local c = {}
  for i = 0, n - 1 do
    local row = {}
    for j = 0, n - 1 do
      local sum = 0
      for k = 0, n - 1 do
        sum = sum + a[i][k] * b[k][j]
      end
      row[j] = sum
    end
    c[i] = row
  end
  return c
end

local function trace(c, n)
  local sum = 0
  for i = 0, n - 1 do
    sum = sum + c[i][n - 1 - i]
  end
  return sum
end

local sum = 0
for _ = 1, rounds do
  sum = sum + trace(product(rows(120, 3), rows(120, 7), 120), 120)
end
print(sum)
