-- Looks at every character of a text: counts vowels and words and keeps a checksum.
local rounds = tonumber(arg[1] or 60)

local function make_text(n)
  local parts = {}
  for i = 1, n do
    parts[i] = "the quick brown fox number " .. i .. " jumps over the lazy dog"
  end
  return table.concat(parts, " ")
end

local function scan(s)
  local vowels, words, check = 0, 0, 0
  for i = 1, #s do
    local c = s:sub(i, i)
    if c == " " then
      words = words + 1
    elseif ("aeiou"):find(c, 1, true) then
      vowels = vowels + 1
    end
    check = (check * 31 + c:byte()) % 1000003
  end
  return (vowels + words * 7 + check) % 1000003
end

local text = make_text(1000)
local sum = 0
for _ = 1, rounds do
  sum = (sum + scan(text)) % 1000003
end
print(sum)
