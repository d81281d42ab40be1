-- Counts words in a table and sums the counts up again, in the order in which the words came.
local rounds = tonumber(arg[1] or 2)

local function count_words(n)
  local counts, keys = {}, {}
  for i = 1, n do
    local word = "w" .. (i * 7001) % 50021
    if counts[word] then
      counts[word] = counts[word] + 1
    else
      counts[word] = 1
      keys[#keys + 1] = word
    end
  end
  local check = #keys
  for _, key in ipairs(keys) do
    check = (check * 3 + counts[key]) % 1000003
  end
  return check
end

local sum = 0
for _ = 1, rounds do
  sum = sum + count_words(300000)
end
print(sum)
