-- Primes below a million by the sieve of Eratosthenes.
local rounds = tonumber(arg[1] or 6)

local function count_primes(limit)
  local is_composite = {}
  for i = 0, limit do is_composite[i] = false end
  local found = 0
  for i = 2, limit do
    if not is_composite[i] then
      found = found + 1
      for j = i + i, limit, i do
        is_composite[j] = true
      end
    end
  end
  return found
end

local count = 0
for _ = 1, rounds do
  count = count + count_primes(1000000)
end
print(count)
