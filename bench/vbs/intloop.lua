-- Integer arithmetic in nested loops, kept below 2^24.
local rounds = tonumber(arg[1] or 8)

local function mix(n)
  local sum = 0
  for i = 1, n do
    for j = 1, 1000 do
      sum = (sum + i * 3 + (j & 7)) % 1000003
    end
  end
  return sum
end

print(mix(math.floor(5000 * rounds)))
